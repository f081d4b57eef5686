#include "run/followed_program.h"

#include <gtest/gtest.h>

#include "run/command_runner.h"
#include "support/workshop.h"

namespace pavoline::testing {

using Sign = FollowedProgram::Sign;

constexpr char kLog[] = "D:\\tool.log";

// A batch whose program is listed as "tool.exe" from the first to the second second; the batch
// itself ends after three.
struct Followed : ::testing::Test, Workshop {
  Followed() {
    processes.onStart("first", [](ToolRun& run) { run.endsAt(1000); });
    processes.onStart("tool", [](ToolRun& run) { run.endsAt(1000); });
    processes.onStart("last", [](ToolRun& run) { run.endsAt(1000), run.exits(7); });
    program = StartBatch(session, "first\r\ntool\r\nlast", {"job", "tool.exe", kLog});
  }
  Sign lookAt(long ms, bool begun = false) {
    run(ms - time.now());
    return program->look(session, begun);
  }
  // Asks every second, as the monitors do: the second at which the silence counts; -1: never.
  long silentAfter(long limitSeconds = 200) {
    for (long second = 0; second <= limitSeconds; ++second) {
      if (program->silentForGood(session)) return second;
      run(1000);
    }
    return -1;
  }
  std::optional<FollowedProgram> program;
};

TEST_F(Followed, IsUnknownUntilListedAndHasEndedWhenItIsNoLonger) {
  EXPECT_EQ(lookAt(500), Sign::kUnknown);
  EXPECT_EQ(lookAt(1500), Sign::kWorks);
  processes.noList = true;
  EXPECT_EQ(lookAt(2500), Sign::kUnknown);
  processes.noList = false;
  EXPECT_EQ(lookAt(2500), Sign::kEnded);
  EXPECT_EQ(program->exitCode(), std::nullopt);
  run(1000);
  EXPECT_EQ(program->exitCode(), 7u);
}

TEST_F(Followed, HasEndedWithoutBeingListed) {
  EXPECT_EQ(lookAt(500, true), Sign::kEnded);  // its log told that it was there

  run(3000);
  program = StartBatch(session, "first", {"job", "tool.exe", kLog});
  EXPECT_EQ(lookAt(4000), Sign::kUnknown);
  EXPECT_EQ(lookAt(4600), Sign::kEnded);  // nobody is left to start it
}

TEST_F(Followed, IsSilentForGoodAMinuteAfterItsEndAndNeverBefore) {
  EXPECT_EQ(silentAfter(), 63);
  files.append(kLog, "late");
  EXPECT_EQ(silentAfter(), 61);
  time.after(40'000, [this] { files.append(kLog, "."); });
  files.append(kLog, ".");
  EXPECT_EQ(silentAfter(), 101);

  files.append(kLog, ".");
  EXPECT_FALSE(program->silentForGood(session));
  processes.alreadyRunning("TOOL.EXE");  // a living one, started by whomever
  EXPECT_EQ(silentAfter(), -1);
}

}  // namespace pavoline::testing
