#pragma once

#include <string>

#include "session/ground.h"

namespace pavoline {

// Restarts the machine. `told` is what is said of the installation; a person may call the restart
// off as long as the question stands. A silent run asks nothing. Where the system has no
// shutdown.exe, as most pre-installation environments, wpeutil.exe restarts it.
void RestartMachine(Ground& ground, const std::string& told);

}  // namespace pavoline
