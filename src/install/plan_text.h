#pragma once

#include <string>
#include <vector>

#include "install/rehearsal.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// What an installation with this plan would do, in words and command lines, CR LF between them:
// the checks that were passed, the plan, each step with what it runs, and what was assumed. A dry
// run is called one.
std::string PlanText(Session& session, const Plan& plan, const std::vector<std::string>& passed,
                     const Rehearsal& rehearsal);

// Its beginning: the checks that were passed.
std::string ChecksText(const Ground& ground, const std::vector<std::string>& passed);

// Shows such a text in a window of its own and returns when that is closed.
void ShowPlanText(Session& session, const std::string& text);

}  // namespace pavoline
