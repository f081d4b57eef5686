#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/foreign_windows.h"
#include "run/followed_program.h"
#include "session/outcome.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// Says that the Ghost program is missing or useless, and where it was looked for.
std::string GhostMissingMessage(Ground& ground);

// A restore that runs.
struct GhostRun {
  std::optional<FollowedProgram> tool;
  std::vector<ForeignWindow> strangers;  // windows of Ghost's class that were there before
  ForeignWindow window = 0;              // 0: not seen yet
  bool minimizePending = false;
  std::optional<std::uint64_t> goneSince;  // when the window was first missed, milliseconds
};

// Starts the Ghost program on the plan's image and partition and lets Timer2 follow its window.
StepResult GhoSetup(Workplace& workplace, const Plan& plan, GhostRun& run);

// One tick of Timer2, which waits for Ghost's window and then follows it. Done when Ghost has ended
// with enough of its work shown.
StepResult GhostTick(Workplace& workplace, const Plan& plan, GhostRun& run);

}  // namespace pavoline
