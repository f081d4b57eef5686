#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// Says that the Ghost program is missing or useless, and where it was looked for.
std::string GhostMissingMessage(Session& session);

// Starts the Ghost program on the chosen image and partition and lets Timer2 follow its window.
void GhoSetup(Session& session);

// One tick of Timer2 at the intervals 1000 (waiting for Ghost's window) and 500 (following it).
void GhostTick(Session& session);

}  // namespace pavoline
