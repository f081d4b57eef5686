#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "form/texts.h"
#include "session/plan.h"

// How far the whole of an installation is, in one line for a person. The bar itself shows only the
// phase that runs.
namespace pavoline {

// What fills the bar once.
enum class Phase { kCopy, kCreate, kExtract, kMetadata, kRestore, kDrivers };

struct PhaseNow {
  Phase phase;
  int percent = 0;  // of this phase
};

struct Overall {
  std::vector<Phase> phases;       // of the plan, in order
  std::optional<PhaseNow> now;     // nothing: what runs does not fill the bar
  std::uint64_t gone = 0;          // milliseconds since the confirmation
  std::uint64_t goneInPhases = 0;  // milliseconds since the first phase began
};

std::vector<Phase> PhasesOf(const Plan& plan);

// Percent of the whole by the weights of the phases. These were measured with wimlib 1.13.5
// applying the bench's image of 700 MB (4,800 files) three times to an NTFS volume of ntfs-3g: 4 %
// of the time for creating files, 95 for their data, 1 for what follows; copying the image there
// took as long as the three. Neither Windows' own NTFS nor the WIMBoot mode, which writes less,
// could be measured. A restore by the Ghost program is one phase. How long drivers take, nobody can
// know before: the whole goes up to them, and while they are added there is no percent.
std::optional<int> OverallPercent(const Overall& overall);

// Milliseconds left of the whole, drivers left out. Nothing before enough is done to tell.
std::optional<std::uint64_t> TimeLeft(const Overall& overall);

// "Phase 2 of 3 · 45% · 3:12 gone · about 4:05 left", each part as far as it is known.
std::string OverallLine(const Texts& texts, const Overall& overall);

}  // namespace pavoline
