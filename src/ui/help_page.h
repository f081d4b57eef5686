#pragma once

#include "session/session.h"

namespace pavoline {

// Opens the page that explains the program, in the language in use or else in English. Where no
// browser can be started, as in a pre-installation environment, the same as text in Notepad; where
// that is missing too, says so.
void OpenHelpPage(Session& session);

}  // namespace pavoline
