#pragma once

#include "session/session.h"

namespace pavoline {

// Adds the program's entries to the main window's system menu.
void BuildSystemMenu(Session& session);

// Runs a system-menu command; false for identifiers that are not the program's.
bool HandleSystemCommand(Session& session, int id);

}  // namespace pavoline
