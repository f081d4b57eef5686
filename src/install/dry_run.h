#pragma once

#include <string>
#include <vector>

#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// The end of a dry run whose checks were all passed: what would be done goes into the record, onto
// standard output, and into a window where a person watches. Its outcome and exit code are those
// that an installation would have if every program did what it should.
void EndDryRun(Session& session, const Plan& plan, const std::vector<std::string>& passed);

// The same of the checks alone, before the one that refuses is told.
void TellChecks(Ground& ground, const std::vector<std::string>& passed);

}  // namespace pavoline
