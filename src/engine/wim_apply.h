#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// Formats the install partition unless told not to, copies the image for WIMBoot when the apply
// mode asks for it, starts the imaging program and switches the monitor on. Returns while the
// program runs.
void WimSetup(Session& session);

}  // namespace pavoline
