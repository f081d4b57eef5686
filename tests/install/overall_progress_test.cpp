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
  constexpr std::uint64_t kMinute = 60'000;
  struct Case {
    const Plan& plan;
    std::optional<PhaseNow> now;
    std::uint64_t gone, inPhases;
    const char* line;
  };
  const Workshop w;
  for (const Case& c : {
           Case{wim, {}, 1999, 0, "Gone 0:01"},
           {wim, {{Phase::kCreate, 50}}, 9000, 8000, "Phase 1 3 · Percent 2 · Gone 0:09"},
           {wim, {{Phase::kExtract, 0}}, 9000, 2999, "Phase 2 3 · Percent 4 · Gone 0:09"},
           {wim,
            {{Phase::kExtract, 0}},
            9000,
            4000,
            "Phase 2 3 · Percent 4 · Gone 0:09 · Left 1:40"},
           {wim,
            {{Phase::kExtract, 80}},
            61 * kMinute,
            60 * kMinute,
            "Phase 2 3 · Percent 80 · Gone 1:01:00 · Left 15:00"},
           {wim,
            {{Phase::kMetadata, 100}},
            kMinute,
            kMinute,
            "Phase 3 3 · Percent 100 · Gone 1:00 · Left 0:00"},
           {copied,
            {{Phase::kCopy, 50}},
            kMinute,
            kMinute,
            "Phase 1 4 · Percent 25 · Gone 1:00 · Left 3:00"},
           {copied,
            {{Phase::kCreate, 0}},
            kMinute,
            kMinute,
            "Phase 2 4 · Percent 50 · Gone 1:00 · Left 1:00"},
           {ghost,
            {{Phase::kRestore, 75}},
            kMinute,
            kMinute,
            "Phase 1 1 · Percent 75 · Gone 1:00 · Left 0:20"},
           {drivers,
            {{Phase::kMetadata, 0}},
            100'000,
            99'000,
            "Phase 3 4 · Percent 99 · Gone 1:40 · AtLeastLeft 0:05"},
           {drivers, {{Phase::kDrivers, 30}}, kMinute, kMinute, "Phase 4 4 · Gone 1:00"},
       }) {
    const Overall overall{PhasesOf(c.plan), c.now, c.gone, c.inPhases};
    EXPECT_EQ(OverallLine(w.session.texts, overall), c.line);
  }
}

}  // namespace pavoline::testing
