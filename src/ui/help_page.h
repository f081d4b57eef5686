#pragma once

#include "session/session.h"

namespace pavoline {

// Opens the page that explains the program, in the language in use or else in English.
void OpenHelpPage(Session& session);

}  // namespace pavoline
