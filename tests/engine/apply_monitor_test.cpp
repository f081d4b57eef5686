#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/installer.h"

namespace pavoline::testing {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string kLog = "C:\\Windows\\temp\\apply.xml";
const std::string kDone = "\r\nDone applying WIM image.\r\n";

std::string Extracted(int percent) {
  return "\rExtracting file data: 1 GiB of 3 GiB (" + std::to_string(percent) + "%) done";
}

TEST(ApplyMonitor, ShowsThePhasesAndHandsOverAsSoonAsTheToolHasEnded) {
  InstallShop w;
  w.plan.format = false;
  w.processes.onStart("wimlib-imagex.exe apply", [&](ToolRun& run) {
    run.print(1000, "\rCreating files: 1 of 4 (25%) done\rCreating files: 2 of");
    run.print(2000, "\r\n" + Extracted(10));
    run.print(4000, Extracted(40) + Extracted(41));
    run.print(7000, "\r\n\rApplying metadata to files: 1 of 3 (33%)\rApplying metadata to files:");
    run.does(9100, [&] { w.applied(); });
    run.print(9100, kDone);
  });
  w.begin();
  using Look = std::pair<int, const char*>;
  for (const auto& [percent, status] :
       {Look{25, "CreatingFiles"}, Look{100, "CreatingFiles"}, Look{40, "Extracting"},
        Look{40, "Extracting"}, Look{100, "Extracting"}, Look{33, "ApplyingMetadata"}}) {
    w.run(kApplyMonitorInterval);
    EXPECT_EQ(w.form.progressBar1.value(), percent) << w.time.now();
    EXPECT_EQ(w.form.status.text(), status) << w.time.now();
    EXPECT_EQ(w.taskbar.values.back(), percent);
  }
  EXPECT_TRUE(w.files.exists(kLog));
  w.run(200);  // long before the next tick
  EXPECT_FALSE(w.files.exists(kLog) || w.files.exists("C:\\Windows\\temp\\apply.bat"));
  EXPECT_THAT(w.heard(), ElementsAre("Finished|Information|64"));
  EXPECT_FALSE(w.session.installation || w.form.timer1.enabled());
  EXPECT_EQ(w.session.exitCode, ExitCode::kInstalled);
}

TEST(ApplyMonitor, AToolThatEndsTooSoonFailsInEveryPhase) {
  struct Case {
    const char* when;
    std::string printed;
    bool waits;  // the minute's watch, since only the long phase sees it at once
  };
  for (const Case& c :
       {Case{"at once", "", true},
        Case{"first phase", "\rCreating files: 1 of 4 (25%)\rCreating files: 2 of", true},
        Case{"after one update", Extracted(0), true},
        Case{"extraction", Extracted(10) + Extracted(20), false},
        Case{"metadata", Extracted(9) + "\r\n\rApplying metadata to files: 1 of 3 (33%)", true}}) {
    InstallShop w;
    w.dialogs.messageMs = 20000;  // ticks would go by
    w.processes.onStart("wimlib-imagex.exe apply", [&](ToolRun& run) {
      run.print(200, c.printed);
      run.complain(300, "[WARNING] x\r\n[ERROR] The data is corrupted\r\n");
      run.exits(72);
    });
    long shownAt = 0;
    w.dialogs.onMessage = [&](const auto&) { shownAt = w.time.now(); };
    w.begin();
    const long began = w.processes.started.back().at;
    ASSERT_TRUE(w.runUntil([&] { return !w.session.installation; })) << c.when;
    EXPECT_THAT(
        w.heard(),
        ElementsAre(
            "ApplyFailed\n\nToolSaid\n[WARNING] x\n[ERROR] The data is corrupted|Error|16"));
    EXPECT_EQ(w.session.exitCode, ExitCode::kImagingFailed);
    EXPECT_EQ(shownAt - began > 60000, c.waits) << c.when << " " << shownAt - began;
    EXPECT_LT(shownAt - began, 70000) << c.when;
    EXPECT_EQ(w.form.progressBar1.value(), 0);
    EXPECT_FALSE(w.taskbar.shown);
    EXPECT_FALSE(w.processes.ranLike("bcdboot") || w.form.timer1.enabled());
    EXPECT_THAT(w.files.text("C:\\Windows\\temp\\Pavoline.log"),
                AllOf(HasSubstr("exit code 72"), HasSubstr("reason: ApplyFailed")));
  }
}

TEST(ApplyMonitor, NoLivingOrUnseenToolIsTakenForDead) {
  for (const bool listed : {true, false}) {
    InstallShop w;
    w.processes.onStart("wimlib-imagex.exe apply", [&](ToolRun& run) {
      run.print(1000, Extracted(10) + Extracted(20));
      if (listed) run.neverEnds();
    });
    w.begin();
    w.processes.noList = !listed;
    w.run(3600 * 1000);
    EXPECT_TRUE(w.session.installation && w.dialogs.messages.empty()) << listed;
  }
}

TEST(ApplyMonitor, AToolThatHasJustFinishedIsNoAccident) {
  InstallShop w;
  ApplyRun run;
  WimSetup(w.session, w.plan, w.plan.source, run);
  run.progress.createPercent = 100;
  w.run(0);
  w.files.put(kLog, Extracted(98) + Extracted(99));
  w.processes.onList = [&] {  // its last line comes between the reading of the log and the listing
    w.files.put(kLog, Extracted(98) + Extracted(99) + kDone);
    w.processes.terminate(run.tool->id() + 1);
  };
  EXPECT_EQ(ApplyMonitorTick(w.session, run).kind, StepResult::kWaits);
  EXPECT_EQ(run.progress.extractPercent, 100);
}

}  // namespace pavoline::testing
