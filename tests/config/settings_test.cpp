#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "config/settings_file.h"
#include "platform/text.h"
#include "support/workshop.h"

namespace pavoline {

using testing::Workshop;

constexpr char kIni[] = "X:\\Pavoline\\Pavoline.ini";

void LoadWith(Workshop& shop, const std::string& keys) {
  shop.files.put(kIni, "[Option]\r\n" + keys);
  LoadIni(shop.session);
}

// The sample that ships, with every setting taken out of comment.
std::string SampleInForce() {
  std::ifstream file(PAVOLINE_SOURCE_DIR "/resources/app/Pavoline.ini");
  return ReplaceAll(std::string(std::istreambuf_iterator<char>(file), {}), "\n;", "\n");
}

TEST(Settings, GiveTheDefaultsWithoutAFileWithGarbageAndWithTheSample) {
  for (const std::string& bytes :
       {std::string(), std::string("\0\xFF\x01[Option\0]==\n\n=\r", 17), SampleInForce()}) {
    Workshop shop;
    if (!bytes.empty()) shop.files.put(kIni, bytes);
    LoadIni(shop.session);
    const Form1& form = shop.form;
    for (int box = kRepairBoot; box <= kRunPlugin; ++box) {
      EXPECT_EQ(form.check[box].ticked(), box == kRepairBoot || box == kRestart) << box;
    }
    EXPECT_EQ(form.marks.formatChoice, "0");
    EXPECT_EQ(shop.session.options.searchLevel, 2);
    EXPECT_EQ(shop.session.options.pluginDir, "Plug-in");
    EXPECT_TRUE(shop.session.minimizeGhost);
    EXPECT_EQ(form.text[kAnswerFile].text() + form.text[kDriverFolder].text() + form.combo2.text() +
                  shop.session.options.defaultSysEdition + shop.session.options.pcUser +
                  shop.form.caption(),
              "Pavoline Installer");
  }
}

TEST(Settings, ReadFlagsByTheirExactValuesAndComposeTheTitle) {
  for (const auto& [keys, box, ticked, title] :
       {std::tuple{"BootRepair=0", kRepairBoot, false, "Pavoline Installer"},
        {"BootRepair=yes\r\nTitleLng=1", kRepairBoot, false, "Pavoline"},
        {"BootRepair=\r\nTitleLng=1\r\nSubTitle=Shop 7", kRepairBoot, true, "Shop 7 - Pavoline"},
        {"NoFormatting=1", kDoNotFormat, true, "Pavoline Installer"},
        {"NoFormatting=yes", kDoNotFormat, false, "Pavoline Installer"}}) {
    Workshop shop;
    LoadWith(shop, std::string(keys) + "\r\n");
    EXPECT_EQ(shop.form.check[box].ticked(), ticked) << keys;
    EXPECT_EQ(shop.form.caption() + shop.session.titleCaption, std::string(title) + title);
  }
  for (const std::string key : {"", "USBPartition", "SearchType", "AdvancedModeHide"}) {
    Workshop shop;
    LoadWith(shop, key + "=1\r\n");
    EXPECT_EQ(std::string(shop.session.options.usbPartition ? "USBPartition" : "") +
                  (shop.session.options.searchType ? "SearchType" : "") +
                  (shop.session.advancedModeHide ? "AdvancedModeHide" : ""),
              key);
  }
}

TEST(Settings, TickAStepOnlyWithItsPathAndCutLongValues) {
  Workshop shop;
  LoadWith(shop,
           "Unattend=1\r\nAddDriver=1\r\nAddDriverFile=D:\\drv\r\nPluginFile=tool\r\n"
           "SearchLevel=deep\r\nSearchDir=" +
               std::string(200, 'a') + "\r\n");
  const auto& check = shop.form.check;
  EXPECT_FALSE(check[kUseAnswerFile].ticked() || check[kRunPlugin].ticked());
  EXPECT_TRUE(check[kAddDrivers].ticked());
  EXPECT_EQ(shop.form.text[kDriverFolder].text() + shop.form.combo2.text(), "D:\\drvtool");
  EXPECT_EQ(shop.session.options.searchDir, std::string(127, 'a'));
  EXPECT_EQ(shop.session.options.searchLevel, 0);
}

TEST(Settings, SaveWhatTheUserChangedInOneOrderAndNothingElse) {
  Workshop shop;
  LoadWith(shop,
           "SearchLevel=3\r\nUnattendFile=.\\Bin\\unattend\\unattend.xml\r\nNoFormatting=1\r\n");
  shop.form.check[kUseAnswerFile].setValue(1);
  shop.form.check[kRestart].setValue(0);
  shop.form.check[kDoNotFormat].setValue(0);  // as for a Ghost image
  shop.form.check[kDoNotFormat].setEnabled(false);
  shop.form.text[kDriverFolder].setText("D:\\drv");
  shop.form.combo2.setText("\"D:\\a b\\x.exe\" \"%ip%\"");
  shop.session.options.computerName = "SHOP-7";
  shop.session.options.pcUser = "user";
  shop.session.options.workGroup = "hall";
  shop.session.options.searchLevel = 1;  // an administrator's setting
  EXPECT_TRUE(SaveAsIni(shop.session));
  const std::string saved =  // a new key goes to the head of its section
      "[Option]\r\nWorkGroup=hall\r\nPCUser=user\r\nComputerName=SHOP-7\r\n"
      "PluginFile=\"\"D:\\a b\\x.exe\" \"%ip%\"\"\r\nPlugin=0\r\nAddDriverFile=D:\\drv\r\n"
      "AddDriver=0\r\nUnattend=1\r\nAutoRestart=0\r\nBootRepair=1\r\nSearchLevel=3\r\n"
      "UnattendFile=.\\Bin\\unattend\\unattend.xml\r\nNoFormatting=1\r\n";
  EXPECT_EQ(shop.files.text(kIni), saved);

  Workshop again;
  LoadWith(again, saved.substr(10));
  EXPECT_EQ(again.form.combo2.text(), "\"D:\\a b\\x.exe\" \"%ip%\"");
  EXPECT_TRUE(SaveAsIni(again.session));
  EXPECT_EQ(again.files.text(kIni), saved) << "what was saved is loaded";
}

}  // namespace pavoline
