#pragma once

#include <string>

#include "session/session.h"

// The values of the command line that stand for settings.
namespace pavoline {

// Lets the settings file that the command line names take the place of the usual one. The text of
// a refusal when it cannot, else empty.
std::string ChooseSettingsFile(Ground& ground);

// A value of the command line beats that of the settings; a path ticks its box.
void TakeNamedValues(Session& session);

}  // namespace pavoline
