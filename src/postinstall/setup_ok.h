#pragma once

#include "session/session.h"

namespace pavoline {

// What follows an applied or restored image: boot files, answer file, drivers, plug-in, restart.
void SetupOK(Session& session);

}  // namespace pavoline
