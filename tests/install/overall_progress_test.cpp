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
           Case{wim, {}, 1999, 0, "M31 0:01"},
           {wim, {{Phase::kCreate, 50}}, 9000, 8000, "M30 1 3 · M34 2 · M31 0:09"},
           {wim, {{Phase::kExtract, 0}}, 9000, 2999, "M30 2 3 · M34 4 · M31 0:09"},
           {wim, {{Phase::kExtract, 0}}, 9000, 4000, "M30 2 3 · M34 4 · M31 0:09 · M32 1:40"},
           {wim,
            {{Phase::kExtract, 80}},
            61 * kMinute,
            60 * kMinute,
            "M30 2 3 · M34 80 · M31 1:01:00 · M32 15:00"},
           {wim,
            {{Phase::kMetadata, 100}},
            kMinute,
            kMinute,
            "M30 3 3 · M34 100 · M31 1:00 · M32 0:00"},
           {copied,
            {{Phase::kCopy, 50}},
            kMinute,
            kMinute,
            "M30 1 4 · M34 25 · M31 1:00 · M32 3:00"},
           {copied,
            {{Phase::kCreate, 0}},
            kMinute,
            kMinute,
            "M30 2 4 · M34 50 · M31 1:00 · M32 1:00"},
           {ghost,
            {{Phase::kRestore, 75}},
            kMinute,
            kMinute,
            "M30 1 1 · M34 75 · M31 1:00 · M32 0:20"},
           {drivers,
            {{Phase::kMetadata, 0}},
            100'000,
            99'000,
            "M30 3 4 · M34 99 · M31 1:40 · M33 0:05"},
           {drivers, {{Phase::kDrivers, 30}}, kMinute, kMinute, "M30 4 4 · M31 1:00"},
       }) {
    const Overall overall{PhasesOf(c.plan), c.now, c.gone, c.inPhases};
    EXPECT_EQ(OverallLine(w.session.texts, overall), c.line);
  }
}

}  // namespace pavoline::testing
