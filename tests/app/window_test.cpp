// The main window between installations: keys, rows, browse buttons.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "form/pixels.h"
#include "support/installer.h"
#include "support/layout_check.h"

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

}  // namespace pavoline
