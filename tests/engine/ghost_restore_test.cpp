#include "engine/ghost_restore.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/engine_shop.h"

namespace pavoline::testing {

const std::string kProgram = "X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe";

struct GhostShop : EngineShop {
  explicit GhostShop(const std::string& version = "12.0.0.10531") {
    files.version(kProgram, version);
    files.put("D:\\my images\\system.gho");
    files.put("E:\\Windows\\explorer.exe");
    form.combo1.setText("D:\\my images\\system.gho");
    for (ComboBox& list : form.combo) list.clear();
    form.combo[kEditions].addItem("x64\\Ghost.exe Ver:" + version);
    form.combo[kEditionDetails].addItem("Path:.\\Bin\\Ghost\\x64\\Ghost.exe");
    form.combo[kEditions].select(0);
    processes.onStart("ghost.exe", [](ToolRun& run) { run.neverEnds(); });
  }

  // Ghost's window comes up after a while; the title is the test's to change.
  void openWindow() {
    run(3000);
    window = windows.open("GhostScreen", "Ghost");
    run(1000);
  }
  void title(const std::string& shown) {
    windows.at(window).title = shown;
    run(kGhostFollowInterval);
  }
  void closeWindow() {
    windows.at(window).open = false;
    run(kGhostFollowInterval);
  }
  ForeignWindow window = 0;
};

TEST(GhoSetup, AddressesThePartitionAsTheBuildUnderstands) {
  for (const auto& [version, destination] :
       {std::pair{"11.5.1.10517", "@os:E:"}, {"12.0.0.10531", "@os:E:"}, {"12.0.0.10532", "2:1"}}) {
    GhostShop w(version);
    GhoSetup(w.session);
    EXPECT_EQ(w.processes.started.at(0).command,
              "\"X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe\" -noide -clone,mode=pload,src="
              "\"D:\\MYIMAG~1\\system.gho\":1,dst=" +
                  std::string(destination) + " -sure");
    EXPECT_EQ(w.processes.started[0].mode, ShowMode::kHidden);
    EXPECT_TRUE(w.form.timer2.enabled());
    EXPECT_EQ(w.form.timer2.interval(), 1000);
  }
}

TEST(GhoSetup, RefusesAProgramWithoutAVersion) {
  for (const char* version : {"", "12.0", "12.0.0."}) {
    GhostShop w(version);
    GhoSetup(w.session);
    EXPECT_EQ(w.heard(), std::vector<std::string>{"S14 " + kProgram + "|S12|16"}) << version;
    EXPECT_TRUE(w.processes.started.empty());
    EXPECT_FALSE(w.form.busy || w.form.timer2.enabled());
  }
}

TEST(GhostTick, FollowsTheTitleAndMinimisesOnce) {
  GhostShop w;
  const ForeignWindow console = w.windows.open("ConsoleWindowClass", kProgram);
  const ForeignWindow untitled = w.windows.open("Other", "");
  w.form.progressBar1.setValue(100);  // of an earlier installation
  GhoSetup(w.session);
  w.run(1000);
  EXPECT_TRUE(w.windows.at(console).hidden);
  w.files.drop(kProgram);  // then it has no short path that could be a title
  w.openWindow();
  EXPECT_FALSE(w.windows.at(untitled).hidden);
  EXPECT_EQ(w.form.status.text(), "S24");
  EXPECT_EQ(w.form.progressBar1.value(), 0);
  EXPECT_EQ(w.form.timer2.interval(), 500);
  w.title("Ghost 12");
  EXPECT_FALSE(w.windows.at(w.window).minimized);
  w.title("Ghost 12 - 57%");
  EXPECT_EQ(w.form.progressBar1.value(), 57);
  EXPECT_EQ(w.taskbar.values.back(), 57);
  EXPECT_TRUE(w.windows.at(w.window).minimized);
  w.windows.at(w.window).minimized = false;  // the person restores it
  for (const char* other : {"Ghost 12 - 58%", "Ghost - x%", "Ghost - "}) w.title(other);
  EXPECT_EQ(w.form.progressBar1.value(), 58);
  EXPECT_FALSE(w.windows.at(w.window).minimized);
}

TEST(GhostTick, MoreThanEightyPercentIsSuccess) {
  for (const int last : {80, 81}) {
    GhostShop w;
    GhoSetup(w.session);
    w.openWindow();
    w.title("Ghost - " + std::to_string(last) + "%");
    w.closeWindow();
    EXPECT_FALSE(w.form.busy || w.form.timer2.enabled()) << last;
    EXPECT_FALSE(w.form.check[kDoNotFormat].enabled());
    EXPECT_EQ(w.said("S30"), last == 80);
    EXPECT_EQ(w.said("S40"), last == 81);
    EXPECT_EQ(w.processes.ranLike("bootsect"), last == 81);
    EXPECT_EQ(w.form.progressBar1.value(), last == 81 ? 100 : 0);
    EXPECT_EQ(w.taskbar.values.back(), last == 81 ? 100 : 0);
  }
}

TEST(Taskbar, ExistsFromVersionSixPointOne) {
  for (const auto& [version, exists] : {std::pair{6.0f, false}, {6.1f, true}, {10.0f, true}}) {
    Workshop w;
    w.session.osVersion = version;
    CreateTaskbarProgress(w.session);
    EXPECT_EQ(w.taskbar.created, exists) << version;
  }
}

}  // namespace pavoline::testing
