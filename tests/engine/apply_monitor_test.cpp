#include "engine/apply_monitor.h"

#include <gtest/gtest.h>

#include "engine/engine_shop.h"
#include "engine/wim_apply.h"

namespace pavoline::testing {

const std::string kLog = "C:\\Windows\\temp\\apply.xml";
const std::string kDone = "\r\nDone applying WIM image.\r\n";

std::string Extracted(int percent) {
  return "\rExtracting file data: 1 GiB of 3 GiB (" + std::to_string(percent) + "%) done";
}

TEST(ApplyMonitor, ShowsThePhasesAndHandsOver) {
  EngineShop w;
  w.form.check[kDoNotFormat].setValue(1);
  w.processes.onStart("wimlib-imagex.exe apply", [&](ToolRun& run) {
    run.print(1000, "\rCreating files: 1 of 4 (25%) done\rCreating files: 2 of");
    run.print(2000, "\r\n" + Extracted(10));
    run.print(4000, Extracted(40) + Extracted(41));
    run.print(7000, "\r\n\rApplying metadata to files: 1 of 3 (33%)\rApplying metadata to files:");
    run.does(10400, [&] { w.applied("10.0.1.2"); });
    run.print(10400, kDone);
  });
  WimSetup(w.session);
  using Look = std::pair<int, const char*>;
  for (const auto& [percent, status] :
       {Look{25, "S23"}, Look{100, "S23"}, Look{40, "S24"}, Look{40, "S24"}, Look{100, "S24"},
        Look{33, "S25"}, Look{100, "S25"}}) {
    w.run(kApplyMonitorInterval);
    EXPECT_EQ(w.form.progressBar1.value(), percent) << w.time.now();
    EXPECT_EQ(w.form.status.text(), status) << w.time.now();
    EXPECT_EQ(w.taskbar.values.back(), percent);
  }
  EXPECT_TRUE(w.files.exists(kLog));
  w.run(kApplyMonitorInterval);
  EXPECT_FALSE(w.files.exists(kLog) || w.files.exists("C:\\Windows\\temp\\apply.bat"));
  EXPECT_TRUE(w.processes.ranLike("bootsect.exe /nt60 S: /mbr") && w.said("S40"));
  EXPECT_FALSE(w.form.busy || w.form.timer1.enabled());
}

TEST(ApplyMonitor, AVanishedToolEndsTheInstallationOnce) {
  EngineShop w;
  w.dialogs.messageMs = 20000;  // ticks would go by
  w.processes.onStart("wimlib-imagex.exe apply", [](ToolRun& run) {
    run.print(3000, Extracted(10) + Extracted(20) + Extracted(30));
  });
  WimSetup(w.session);
  ASSERT_TRUE(w.runUntil([&] { return !w.form.busy; }));
  EXPECT_EQ(w.heard(), std::vector<std::string>{"S30|S12|16"});
  EXPECT_EQ(w.form.progressBar1.value(), 0);
  EXPECT_EQ(w.taskbar.states.back(), TaskbarState::kNone);
  EXPECT_FALSE(w.processes.ranLike("bootsect"));
  EXPECT_TRUE(w.files.exists(kLog));
}

TEST(ApplyMonitor, AToolThatHasJustFinishedIsNoAccident) {
  // The tool writes its last line and ends between the reading of the log and the listing.
  struct LateProcesses : FakeProcesses {
    using FakeProcesses::FakeProcesses;
    std::function<void()> beforeListing;
    std::vector<RunningProcess> list() override {
      beforeListing();
      return {};
    }
  };
  EngineShop w;
  LateProcesses late(w.time, w.files, w.environment);
  late.beforeListing = [&] { w.files.put(kLog, Extracted(98) + Extracted(99) + kDone); };
  Platform platform{late,   w.files,   w.drives,  w.profile, w.environment,
                    w.text, w.windows, w.taskbar, w.dialogs};
  Session session{platform, w.form};
  session.apply.createPercent = 100;
  w.files.put(kLog, Extracted(98) + Extracted(99));
  ApplyMonitorTick(session);
  EXPECT_TRUE(w.dialogs.messages.empty());
  EXPECT_EQ(session.apply.extractPercent, 100);
}

}  // namespace pavoline::testing
