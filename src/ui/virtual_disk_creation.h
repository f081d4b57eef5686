#pragma once

#include "session/session.h"

namespace pavoline {

// The window that creates a virtual disk. True when one was made.
bool ShowVirtualDiskCreation(Session& session);

}  // namespace pavoline
