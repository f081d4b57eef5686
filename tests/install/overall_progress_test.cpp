#include "install/overall_progress.h"

#include <gtest/gtest.h>

#include "support/workshop.h"

namespace pavoline::testing {

TEST(OverallProgress, TellsWhatIsKnownOfTheWhole) {
  Plan wim, drivers, copied, ghost;
  wim.kind = drivers.kind = copied.kind = ImageKind::kWim;
  drivers.driverFolder = "D:\\DRIVERS";
  copied.apply.wimcopy = true;
  ghost.kind = ImageKind::kGho;
  struct Case {
    const Plan& plan;
    std::optional<PhaseNow> now;
    int gone, inPhases;  // seconds
    const char* line;
  };
  const Workshop w;
  using enum Phase;
  for (const Case& c :
       {Case{wim, {}, 1, 0, "M31 0:01"},
        {wim, {{kCreate, 50}}, 9, 8, "M30 1 3 · M34 2 · M31 0:09"},
        {wim, {{kExtract, 0}}, 9, 2, "M30 2 3 · M34 4 · M31 0:09"},
        {wim, {{kExtract, 0}}, 9, 4, "M30 2 3 · M34 4 · M31 0:09 · M32 1:40"},
        {wim, {{kExtract, 80}}, 3660, 3600, "M30 2 3 · M34 80 · M31 1:01:00 · M32 15:00"},
        {wim, {{kMetadata, 100}}, 60, 60, "M30 3 3 · M34 100 · M31 1:00 · M32 0:00"},
        {copied, {{kCopy, 50}}, 60, 60, "M30 1 4 · M34 25 · M31 1:00 · M32 3:00"},
        {copied, {{kCreate, 0}}, 60, 60, "M30 2 4 · M34 50 · M31 1:00 · M32 1:00"},
        {ghost, {{kRestore, 75}}, 60, 60, "M30 1 1 · M34 75 · M31 1:00 · M32 0:20"},
        {drivers, {{kMetadata, 0}}, 100, 99, "M30 3 4 · M34 99 · M31 1:40 · M33 0:05"},
        {drivers, {{kDrivers, 30}}, 60, 60, "M30 4 4 · M31 1:00"}}) {
    const Overall overall{PhasesOf(c.plan), c.now, c.gone * 1000ull + 999, c.inPhases * 1000ull};
    EXPECT_EQ(OverallLine(w.session.texts, overall), c.line);
  }
}

}  // namespace pavoline::testing
