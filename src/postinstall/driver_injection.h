#pragma once

#include <optional>
#include <string>
#include <vector>

#include "run/followed_program.h"
#include "session/outcome.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// A driver step that runs, or has run.
struct DriverRun {
  std::optional<FollowedProgram> tool;
  bool complete = false;            // dism has ended and reported success
  std::vector<std::string> failed;  // paths of the packages that were not added
  int ticksWithout = 0;             // since dism went while its interpreter stayed
};

// Starts adding the plan's driver folder to the applied system and lets Timer3 follow. Done, with
// nothing complete, when it could not be started.
StepResult StartDriverInjection(Workplace& workplace, const Plan& plan, DriverRun& run);

// One tick of Timer3: shows the count of packages. Done when dism has ended, however it ended.
StepResult DriverMonitorTick(Workplace& workplace, DriverRun& run);

}  // namespace pavoline
