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
       {Case{wim, {}, 1, 0, "Gone 0:01"},
        {wim, {{kCreate, 50}}, 9, 8, "Phase 1 3 · Percent 2 · Gone 0:09"},
        {wim, {{kExtract, 0}}, 9, 2, "Phase 2 3 · Percent 4 · Gone 0:09"},
        {wim, {{kExtract, 0}}, 9, 4, "Phase 2 3 · Percent 4 · Gone 0:09 · Left 1:40"},
        {wim, {{kExtract, 80}}, 3660, 3600, "Phase 2 3 · Percent 80 · Gone 1:01:00 · Left 15:00"},
        {wim, {{kMetadata, 100}}, 60, 60, "Phase 3 3 · Percent 100 · Gone 1:00 · Left 0:00"},
        {copied, {{kCopy, 50}}, 60, 60, "Phase 1 4 · Percent 25 · Gone 1:00 · Left 3:00"},
        {copied, {{kCreate, 0}}, 60, 60, "Phase 2 4 · Percent 50 · Gone 1:00 · Left 1:00"},
        {ghost, {{kRestore, 75}}, 60, 60, "Phase 1 1 · Percent 75 · Gone 1:00 · Left 0:20"},
        {drivers,
         {{kMetadata, 0}},
         100,
         99,
         "Phase 3 4 · Percent 99 · Gone 1:40 · AtLeastLeft 0:05"},
        {drivers, {{kDrivers, 30}}, 60, 60, "Phase 4 4 · Gone 1:00"}}) {
    const Overall overall{PhasesOf(c.plan), c.now, c.gone * 1000ull + 999, c.inPhases * 1000ull};
    EXPECT_EQ(OverallLine(w.session.texts, overall), c.line);
  }
}

}  // namespace pavoline::testing
