#pragma once

#include <string>

#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// Makes full paths of the plan's answer file and driver folder, the machine's facts put in. Gives
// the text of a refusal when the machine has nothing to put in, there or into the computer name, or
// when a path that the command line names is not there; empty when all is well.
std::string ResolveNamedValues(Session& session, Plan& plan);

}  // namespace pavoline
