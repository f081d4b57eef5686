#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// Copies the image into the install partition's system folder, where a system that keeps running
// from its image looks for it, and opens that folder to the system. The path of the copy; empty
// when the installation is over: the copy failed (said and dealt with) or the window was closed.
std::string CopyImageForWimboot(Session& session, const std::string& image);

}  // namespace pavoline
