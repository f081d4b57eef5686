#pragma once

#include "session/session.h"

namespace pavoline {

// One tick of Timer1: rereads the imaging program's output and shows its phase and percent; goes
// on to SetupOK when it is done, and back to idle when the program has vanished.
void ApplyMonitorTick(Session& session);

}  // namespace pavoline
