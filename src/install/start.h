#pragma once

#include "session/session.h"

namespace pavoline {

// The Start button: checks everything that must hold, asks for confirmation, and begins the
// installation with the plan that was confirmed. A refusal shows one message; under "/install" it
// ends the program. A dry run asks nothing and tells what would be done instead.
void StartInstallation(Session& session);

}  // namespace pavoline
