#pragma once

#include "session/session.h"

namespace pavoline {

// Reads every setting of section "Option" into the controls (whose handlers run as after a user's
// action) and the session. Missing keys give the defaults.
void LoadIni(Session& session);

// Writes what the user can change in the program; administrator settings are never written. False
// when any value could not be written.
bool SaveAsIni(Session& session);

}  // namespace pavoline
