#pragma once

#include "session/session.h"

namespace pavoline {

// Starts adding the driver folder to the applied system and lets Timer3 follow.
void StartDriverInjection(Session& session);

// One tick of Timer3: shows the count of packages; goes on to CallPlugin when dism has ended.
void DriverMonitorTick(Session& session);

}  // namespace pavoline
