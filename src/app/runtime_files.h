#pragma once

#include "session/ground.h"

namespace pavoline {

// First thing at start: learns the running system's version from its kernel32.dll and gives
// pre-installation environments of new builds the folder and the system library they lack.
// Failures are silent.
void RepairRuntimeFiles(Ground& ground);

}  // namespace pavoline
