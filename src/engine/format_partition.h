#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// Formats the install partition as NTFS under its present label. False when the installation is
// over: format.com is missing (said and dealt with), or the window was closed meanwhile. Whether
// format itself succeeded cannot be told.
bool FormatInstallPartition(Session& session);

}  // namespace pavoline
