#include "engine/ghost_restore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/installer.h"

namespace pavoline::testing {

using ::testing::ElementsAre;

const std::string kProgram = "X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe";

struct GhostShop : InstallShop {
  GhostShop() {
    files.put(kProgram);
    plan.source = "D:\\my images\\system.gho";
    plan.kind = ImageKind::kGho;
    plan.ghostProgram = kProgram;
    plan.ghostBuild = 10531;
    files.put(plan.source);
    applied();
    processes.onStart("ghost.exe", [](ToolRun& run) { run.neverEnds(); });
  }

  std::uint32_t ghost() { return session.installation->ghost.tool->id(); }
  void open() {
    window = windows.open("GhostScreen", "Ghost", ghost());
    run(kGhostWaitInterval - 20);
    EXPECT_NE(form.status.text(), "S24");
    run(20);
  }
  void title(const std::string& shown) {
    windows.at(window).title = shown;
    run(kGhostFollowInterval);
  }
  ForeignWindow window = 0;
};

TEST(GhostTick, FollowsItsOwnWindowsTitleAndMinimisesOnce) {
  GhostShop w;
  const ForeignWindow console = w.windows.open("ConsoleWindowClass", kProgram);
  const ForeignWindow untitled = w.windows.open("Other", "");
  const ForeignWindow early = w.windows.open("GhostScreen", "Ghost - 99%");
  w.form.progressBar1.setValue(100);  // of an earlier installation
  w.begin();
  w.windows.at(early).process = w.ghost();  // a number that was used again
  w.windows.open("GhostScreen", "Ghost - 98%", w.ghost() + 1);
  w.run(1000);
  EXPECT_TRUE(w.windows.at(console).hidden);
  EXPECT_NE(w.form.status.text(), "S24") << "windows of others";
  w.files.drop(kProgram);  // then it has no short path that could be a title
  w.open();
  EXPECT_FALSE(w.windows.at(untitled).hidden);
  EXPECT_EQ(w.form.status.text(), "S24");
  EXPECT_EQ(w.form.progressBar1.value(), 0);
  w.title("Ghost 12");
  EXPECT_FALSE(w.windows.at(w.window).minimized);
  w.title("Ghost 12 -  57%");
  EXPECT_EQ(w.form.progressBar1.value(), 57);
  EXPECT_EQ(w.taskbar.values.back(), 57);
  EXPECT_TRUE(w.windows.at(w.window).minimized);
  w.windows.at(w.window).minimized = false;  // the person restores it
  for (const char* other : {"Ghost 12 - 58%", "Ghost - x%", "Ghost - "}) w.title(other);
  EXPECT_EQ(w.form.progressBar1.value(), 58);
  EXPECT_FALSE(w.windows.at(w.window).minimized);
  w.title("");
  w.run(3600 * 1000);
  EXPECT_TRUE(w.session.installation) << "no end while it runs";
}

TEST(GhostTick, MoreThanEightyPercentIsSuccess) {
  for (const int last : {80, 81}) {
    for (const bool lingers : {false, true}) {  // without its window
      GhostShop w;
      w.begin();
      w.open();
      w.title("Ghost - " + std::to_string(last) + "%");
      w.windows.at(w.window).open = false;
      if (!lingers) w.processes.terminate(w.ghost());
      w.run(59000);
      EXPECT_EQ(w.session.installation != nullptr, lingers);
      w.run(2000);
      EXPECT_FALSE(w.session.installation || w.form.timer2.enabled()) << last;
      EXPECT_THAT(w.heard(), ElementsAre(last == 81 ? "S40|S8|64" : "S30|S12|16"));
      EXPECT_EQ(w.session.exitCode, last == 81 ? ExitCode::kInstalled : ExitCode::kImagingFailed);
      EXPECT_EQ(w.processes.ranLike("bootsect"), last == 81);
      EXPECT_EQ(w.form.progressBar1.value(), last == 81 ? 100 : 0);
      EXPECT_EQ(w.taskbar.values.back(), last == 81 ? 100 : 0);
    }
  }
}

}  // namespace pavoline::testing
