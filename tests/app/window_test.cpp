// The main window between installations: keys, rows, browse buttons.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/hot_keys.h"
#include "support/installer.h"

namespace pavoline {

using testing::Installer;

TEST(HotKeys, F2TogglesTheWidthAndTheOptions) {
  Installer shop;
  shop.start();
  for (const bool wide : {false, true}) {
    ASSERT_TRUE(shop.form.onKeyDown(kKeyF2, 0));
    EXPECT_EQ(shop.form.width(), wide ? kWideWidth : kNarrowWidth);
    EXPECT_EQ(shop.form.status.text(), wide ? "S1" : "S0");
    EXPECT_EQ(shop.form.frame[kOptionsFrame].visible(), wide);
  }
}

TEST(HotKeys, StartToolsThatAreThereAndOnlyWhileIdle) {
  for (const auto& [key, path, closes] :
       {std::tuple{'B', "X:\\Pavoline\\Brantor.exe", true},
        {'R', "X:\\Quillet\\Quillet.exe", true},
        {'D', "X:\\DiskGenius\\DiskGenius.exe", false},
        {'G', "X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", true}}) {
    Installer shop;
    shop.files.shortNames = false;  // started by its short path
    shop.start();
    shop.form.onKeyDown(key, kControlKey);
    EXPECT_FALSE(shop.form.unloaded()) << path;  // it is not there
    shop.files.put(path);
    shop.form.onKeyDown(key, kShiftNone);
    shop.running().activity = Activity::kInstalling;
    shop.form.onKeyDown(key, kControlKey);
    EXPECT_FALSE(shop.processes.ranLike(path)) << path;
    shop.running().activity = Activity::kIdle;
    shop.form.onKeyDown(key, kControlKey);
    EXPECT_TRUE(shop.processes.ranLike(path)) << path;
    EXPECT_EQ(shop.form.unloaded(), closes) << path;
  }
}

TEST(Rows, TickingAnEmptyRowAsksForItsPathAtOnce) {
  Installer shop;
  shop.files.put("X:\\Pavoline\\Bin\\unattend\\unattend.xml", "\xEF\xBB\xBF<unattend/>");
  shop.start();
  shop.form.check[kUseAnswerFile].setValue(1);
  EXPECT_FALSE(shop.form.check[kUseAnswerFile].ticked()) << "cancelled";
  EXPECT_EQ(shop.dialogs.openRequests.back().initialFolder, "X:\\Pavoline\\Bin\\unattend");

  shop.dialogs.files = {"X:\\Pavoline\\Bin\\unattend\\unattend.xml"};
  shop.form.check[kUseAnswerFile].setValue(1);
  EXPECT_EQ(shop.form.text[kAnswerFile].text(), ".\\Bin\\unattend\\unattend.xml");
  EXPECT_TRUE(shop.form.text[kAnswerFile].enabled() &&
              shop.form.command1[kBrowseAnswerFile].enabled());

  shop.dialogs.folders = {"X:\\Pavoline2\\drv"};
  shop.form.check[kAddDrivers].setValue(1);
  EXPECT_EQ(shop.form.text[kDriverFolder].text(), "X:\\Pavoline2\\drv");
  const auto asked = shop.dialogs.openRequests.size();
  shop.form.check[kRunPlugin].setValue(1);
  EXPECT_EQ(shop.dialogs.openRequests.size(), asked) << "a plug-in row asks nothing";
  EXPECT_TRUE(shop.form.combo2.enabled());
}

TEST(Rows, RefuseAnswerFilesInOtherEncodings) {
  for (const char* content : {"\xFF\xFE<\0", "<unattend/>", "\xFE\xFF", "", "\xEF"}) {
    Installer shop;
    shop.files.put("D:\\a.xml", content);
    shop.start();
    shop.dialogs.files = {"D:\\a.xml"};
    shop.form.check[kUseAnswerFile].setValue(1);
    EXPECT_EQ(shop.count("S7"), 1);
    EXPECT_EQ(shop.form.text[kAnswerFile].text(), "");
  }
}

TEST(Chooser, IsRefusedUntilThePartitionsAreKnown) {
  Installer shop;
  shop.start();
  for (const unsigned known : {0u, 1u}) {
    shop.form.setTag(std::to_string(known));
    shop.form.command1[kChooseBoot].press();
    EXPECT_EQ(shop.dialogs.shownForms.size(), known);
  }
  EXPECT_EQ(shop.count("S45"), 1);
}

TEST(Search, RunsOnTheButtonAndStopsOnTheSecondPress) {
  Installer shop;
  shop.start();
  shop.files.sized("D:\\wim\\big.wim", 5ull << 30);
  shop.files.sized("E:\\wim\\also.wim", 5ull << 30);
  shop.form.search.press();
  EXPECT_EQ(shop.running().search.found.size(), 2u);
  EXPECT_EQ(shop.form.status.text(), "S55 2");
  EXPECT_EQ(shop.form.search.text(), "S54");
  EXPECT_EQ(shop.dialogs.shownForms.size(), 1u);

  shop.processes.eventsMs = 10;
  shop.time.after(5, [&] {
    EXPECT_EQ(shop.form.search.text(), "S27");
    shop.form.search.press();
  });
  shop.form.search.press();
  EXPECT_LT(shop.running().search.found.size(), 2u);
}

}  // namespace pavoline
