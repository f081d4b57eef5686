#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// The last step: runs the chosen plug-in, then announces the end or restarts the machine.
void CallPlugin(Session& session);

// Runs a discovered plug-in by name; nothing when there is none of that name.
void RunPlugin(Session& session, const std::string& name);

}  // namespace pavoline
