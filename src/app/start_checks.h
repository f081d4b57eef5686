#pragma once

#include "session/session.h"

namespace pavoline {

// The Start button: checks everything that must hold, asks for confirmation, and hands over to the
// imaging or the Ghost engine. A refusal shows one message; under "/install" it ends the program.
void StartInstallation(Session& session);

}  // namespace pavoline
