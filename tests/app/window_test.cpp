// The main window between installations: keys, rows, browse buttons.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/hot_keys.h"
#include "support/installer.h"

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
  EXPECT_EQ(shop.form.status.text(), "M80") << "an account that anybody can use";

  shop.dialogs.folders = {"X:\\Pavoline2\\drv"};
  shop.form.check[kAddDrivers].setValue(1);
  EXPECT_EQ(shop.form.text[kDriverFolder].text(), "X:\\Pavoline2\\drv");
  shop.form.check[kRunPlugin].setValue(1);
  EXPECT_EQ(shop.dialogs.openRequests.size(), 2u) << "a plug-in row asks nothing";
  EXPECT_TRUE(shop.form.combo2.enabled());
}

}  // namespace pavoline
