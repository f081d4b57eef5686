#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// Section "Option" of the settings file; at most 127 bytes of the ANSI form.
std::string ReadSetting(Session& session, const std::string& key);

// Reads every setting into the controls (whose handlers run as after a user's action) and the
// session. Missing keys give the defaults.
void LoadIni(Session& session);

// Writes what the user can change in the program; administrator settings are never written. False
// when any value could not be written.
bool SaveAsIni(Session& session);

}  // namespace pavoline
