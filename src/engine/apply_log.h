#pragma once

#include <optional>
#include <string_view>

#include "session/records.h"

// Reads the imaging program's output. It is a pure function of the text and of what was known
// before, so that it can be tried on any log.
namespace pavoline {

struct ApplyStep {
  int status = 0;  // text number of the phase's name; meaningless when `finished`
  ApplyProgress progress;
  std::optional<int> shown;  // percent to display; nothing: the display stays
  bool finished = false;     // the phases were over already before this text
  bool toolNeeded = false;   // the phase makes progress only while the program runs
};

// One look at the whole output so far. The program goes through three phases, each with a line of
// its own that it rewrites in place; the newest line may be half written, so that the one before
// it tells the percent. A phase is over at the first sign of a later one, and at most one phase
// ends per look. The cost is that of searching the text a few times.
ApplyStep ParseApplyLog(std::string_view text, const ApplyProgress& before);

}  // namespace pavoline
