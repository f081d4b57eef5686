#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "engine/apply_log.h"
#include "run/followed_program.h"
#include "session/outcome.h"
#include "session/plan.h"
#include "session/session.h"

namespace pavoline {

// An apply that runs: the program and how far its output has been read.
struct ApplyRun {
  std::optional<FollowedProgram> tool;
  ApplyLog log;
  std::uint64_t bytesRead = 0;
  ApplyProgress progress;
};

// True when the files that an apply needs can be made. Tried before anything on the partition is
// lost: a read-only or full temporary folder would show only after the formatting. It also takes
// away what an earlier run left in them.
bool ApplyFilesWritable(Ground& ground);

// False when the line that starts the imaging program is longer than the interpreter reads: a split
// image has a word for each part.
bool ApplyLineFits(Ground& ground, const Plan& plan);

// Starts the imaging program on `source`, which is the plan's image or a copy of it, and switches
// the monitor on. Waits, or failed.
StepResult WimSetup(Workplace& workplace, const Plan& plan, const std::string& source,
                    ApplyRun& run);

// One tick of Timer1: reads what is new in the imaging program's output and shows its phase and
// percent. Done when the image is written; failed when the program has vanished before.
StepResult ApplyMonitorTick(Workplace& workplace, ApplyRun& run);

}  // namespace pavoline
