// The main window between installations: keys, rows, browse buttons.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "form/pixels.h"
#include "support/installer.h"
#include "support/layout_check.h"
#include "ui/system_menu.h"

namespace pavoline {

using testing::Installer;

TEST(Rows, TickingAnEmptyRowAsksForItsPathAtOnce) {
  Installer shop;
  const std::string folder = "X:\\Pavoline\\Bin\\unattend", file = folder + "\\unattend.xml";
  shop.files.put(file, "\xEF\xBB\xBF<Password><Value></Value></Password>");
  shop.start();
  for (const bool chosen : {false, true}) {
    shop.dialogs.files = {chosen ? file : ""};
    shop.form.check[kUseAnswerFile].setValue(1);
    EXPECT_EQ(shop.form.check[kUseAnswerFile].ticked(), chosen);
    EXPECT_EQ(shop.form.command1[kBrowseAnswerFile].enabled(), chosen);
  }
  EXPECT_EQ(shop.dialogs.openRequests.back().initialFolder, folder);
  EXPECT_EQ(shop.form.text[kAnswerFile].text(), ".\\Bin\\unattend\\unattend.xml");
  EXPECT_EQ(shop.form.status.text(), "NoPassword") << "an account that anybody can use";

  shop.dialogs.folders = {"X:\\Pavoline2\\drv"};
  shop.form.check[kAddDrivers].setValue(1);
  EXPECT_EQ(shop.form.text[kDriverFolder].text(), "X:\\Pavoline2\\drv");
  shop.form.check[kRunPlugin].setValue(1);
  EXPECT_EQ(shop.dialogs.openRequests.size(), 2u) << "a plug-in row asks nothing";
  EXPECT_TRUE(shop.form.combo2.enabled());
}

// All that a person may try; what has an effect is told by its letter.
std::string Possible(Activity activity) {
  const std::pair<char, std::function<void(Installer&)>> acts[] = {
      {'s', [](Installer& w) { w.pressStart(); }},
      {'b', [](Installer& w) { w.form.command1[kBrowseImage].press(); }},
      {'d', [](Installer& w) { w.form.onDropFiles({"D:\\other.wim"}); }},
      {'m', [](Installer& w) { w.form.onSystemCommand(kMenuFirstApplyMode + 1); }},
      {'p', [](Installer& w) { w.form.command1[kChooseInstall].press(); }},
      {'f', [](Installer& w) { w.form.search.press(); }},
      {'k', [](Installer& w) { w.form.onKeyDown(kKeyF2, kShiftNone); }},
      {'v', [](Installer& w) { w.form.onSystemCommand(kMenuVirtualDisk); }},
      {'r', [](Installer& w) { w.form.onSystemCommand(kMenuBootRepair); }},
      {'e', [](Installer& w) { w.form.onSystemCommand(kMenuPrepareDisk); }},
      {'t', [](Installer& w) { w.form.onSystemCommand(kMenuGhost); }},
      {'l', [](Installer& w) { w.form.onSystemCommand(kMenuAbout); }},
      {'x', [](Installer& w) { w.form.close(); }}};
  std::string possible;
  Installer w;
  w.files.put("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe");
  w.start();
  for (const auto& [letter, act] : acts) {
    const auto state = [&] {
      return std::tuple(w.dialogs.messages.size(), w.dialogs.openRequests.size(),
                        w.dialogs.shownForms.size(), w.processes.ran.size(), w.form.combo1.text(),
                        w.form.caption(), w.form.width(), w.form.status.text(), w.form.unloaded());
    };
    w.running().activity = activity;
    const auto before = state();
    w.dialogs.answers = {kAnswerCancel};
    act(w);
    if (state() != before) possible += letter;
  }
  return possible;
}

TEST(Window, LetsAPersonDoWhatTheActivityAllows) {
  for (const auto& [activity, possible] : {std::pair{Activity::kIdle, "sbdmpfkvretlx"},
                                           {Activity::kStarting, "sbdmlx"},
                                           {Activity::kListing, "sbdmlx"},
                                           {Activity::kReadingSource, "mplx"},
                                           {Activity::kChecking, "lx"},
                                           {Activity::kInstalling, "lx"},
                                           {Activity::kRepairingBoot, "lx"},
                                           {Activity::kPreparingDisk, "lx"},
                                           {Activity::kVirtualDisk, "l"},
                                           {Activity::kClosed, "x"}}) {
    EXPECT_EQ(Possible(activity), possible) << static_cast<int>(activity);
  }
}

TEST(Window, StartsNarrowWhereTheWideOneHasNoRoomAndNamesEveryControl) {
  for (const int pixels : {912, 911}) {
    Installer shop;
    shop.environment.screen.width = pixels * 15;
    shop.start();
    EXPECT_EQ(shop.form.width(), pixels == 912 ? kWideWidth : kNarrowWidth);
    EXPECT_EQ(shop.form.frame[kOptionsFrame].visible(), pixels == 912);
    EXPECT_EQ(testing::NamelessControls(shop.form), "");
  }
  // 800x600 at 200 %: the narrow window is drawn as at 145.
  EXPECT_EQ(FittingDpi(192, kNarrowWidth, 800), 145);
  EXPECT_EQ(FittingDpi(144, kNarrowWidth, 800), 144);
}

TEST(Search, IsStoppedByItsButtonAndBegunAnew) {
  Installer w;
  for (const char* file : {"1", "2", "3"}) {
    w.files.sized("D:\\wim\\" + std::string(file) + ".wim", 500'000'000);
  }
  w.start();
  w.fillIn();
  for (const bool stopped : {true, false}) {
    if (stopped) w.time.after(1, [&] { w.form.search.press(); });
    w.form.search.press();
    EXPECT_EQ(w.running().search.found.size() < 3, stopped);
  }
  w.time.after(1, [&] { w.pressStart(); });
  w.form.search.press();
  EXPECT_TRUE(w.running().installation && w.running().search.found.size() < 3);
}

}  // namespace pavoline
