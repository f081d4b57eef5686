#pragma once

#include "session/session.h"

namespace pavoline {

// The window that creates a virtual disk.
void ShowVirtualDiskCreation(Session& session);

}  // namespace pavoline
