#include "ui/small_windows.h"

#include <gmock/gmock.h>

#include "support/workshop.h"
#include "ui/controls.h"
#include "ui/left_bytes.h"

namespace pavoline::testing {

using ::testing::ElementsAre;

struct ChooserWorkshop : Workshop {
  ChooserWorkshop() {
    files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
    processes.onStart("CxDir.exe", [this](ToolRun& run) { run.print(1, listing); });
    drives.add("S:");
    drives.add("D:", kDriveFixed, VolumePosition{2, 1});
    drives.add("E:", kDriveFixed, VolumePosition{2, 2});
    form.text[kInstallPartition].setText("E:");
  }
  // Opens the chooser, lets the person act in it and returns the letter that the field has then.
  std::string choose(PartitionPurpose purpose, std::function<void(Form&, ListView&)> act) {
    dialogs.modals.push_back([act](Form& window) { act(window, Nth<ListView>(window)); });
    ShowPartitionChooser(session, purpose);
    return form.text[purpose == PartitionPurpose::kBoot ? kBootPartition : kInstallPartition]
        .text();
  }

  std::string listing =
      "1:1\tS:\t260.00MB\tFAT32\tEFI\tDisk A\tSystem\tGPT\t0\r\n"
      "2:1\tD:\t100.00GB\tNTFS\tPrimary\tDisk B\tData\tMBR\t1\r\n"
      "2:2\tE:\t365.76GB\tNTFS\tPrimary\tDisk B\tWork\tMBR\t0\r\n";
};

std::vector<std::string> Titles(const ListView& list) {
  std::vector<std::string> titles;
  for (const ListColumn& column : list.columns()) titles.push_back(column.title);
  return titles;
}

TEST(PartitionChooser, ListsAfreshAndTakesARowByButtonAndByDoubleClick) {
  ChooserWorkshop w;
  const auto cancel = [](Form& window, ListView& list) {
    EXPECT_EQ(window.caption(), "S52");
    EXPECT_THAT(Titles(list), ElementsAre("S46", "S47", "S48", "S49", "S50"));
    EXPECT_THAT(list.rows(), ElementsAre(ElementsAre("D:", "Data", "Disk B", "NTFS", "100.00GB"),
                                         ElementsAre("E:", "Work", "Disk B", "NTFS", "365.76GB")));
    EXPECT_EQ(list.selected(), 1);
    EXPECT_EQ(window.focused(), &list);
    list.select(0);
    ButtonWith(window, "S10").press();
  };
  EXPECT_EQ(w.choose(PartitionPurpose::kInstall, cancel), "E:");
  EXPECT_EQ(w.form.facts[kBootPartition].text(), "M1 Data, 100.00GB, NTFS, Disk B");
  const auto pressOk = [](Form& window, ListView& list) {
    for (const int row : {-1, 0}) {
      list.select(row);
      ButtonWith(window, "S9").press();
      EXPECT_EQ(window.unloaded(), row == 0);
    }
  };
  EXPECT_EQ(w.choose(PartitionPurpose::kInstall, pressOk), "D:");
  const auto doubleClick = [](Form& window, ListView& list) {
    EXPECT_EQ(window.caption() + std::to_string(list.selected()), "S511");
    list.select(0);
    list.activate();
  };
  EXPECT_EQ(w.choose(PartitionPurpose::kBoot, doubleClick), "S:");
  EXPECT_EQ(w.processes.ran.size(), 3u);
  w.session.activity = Activity::kReadingSource;  // its tool is not disturbed by another
  EXPECT_EQ(w.choose(PartitionPurpose::kBoot, [](auto&, auto&) {}), "S:");
  EXPECT_EQ(w.processes.ran.size(), 3u);

  w.session.activity = Activity::kIdle;
  w.listing = "";
  const auto nothing = [](Form& window, ListView& list) {
    EXPECT_FALSE(list.visible() || window.defaultButton->enabled());
    EXPECT_TRUE(Nth<Label>(window).visible());
    EXPECT_EQ(Nth<Label>(window).text(), "S53");
  };
  EXPECT_EQ(w.choose(PartitionPurpose::kInstall, nothing), "D:");
}

TEST(ComputerNameDialog, FiltersTypingAndStoresTheNamesHoweverItIsClosed) {
  Workshop w;
  for (const bool byEscape : {true, false}) {  // else from outside
    w.session.options.pcUser = "Ann";
    w.session.options.computerName = "OLD";
    w.session.options.workGroup = "";
    w.dialogs.modals.push_back([&](Form& window) {
      auto& user = Nth<ComboBox>(window);
      auto &computer = Nth<TextBox>(window, 0), &group = Nth<TextBox>(window, 1);
      EXPECT_EQ(user.text() + computer.text() + group.text(), "AnnOLDWorkGroup");
      for (const KeyFilter& taken : {user.onKeyPress, computer.onKeyPress, group.onKeyPress}) {
        for (const char32_t c : {U'9', U'Z', U'-', U'\b'}) EXPECT_TRUE(taken(c)) << int(c);
        for (const char32_t c : {U'_', U' ', U'@', U'[', U'\uff11'}) EXPECT_FALSE(taken(c));
      }
      user.setText("123456789012345678901");  // pasted, and not filtered then
      computer.setText("A_234567890123456");
      group.setText("G23456789012345tail");
      if (byEscape) window.cancelButton->press();
    });
    ShowComputerNameDialog(w.session);
    EXPECT_EQ(w.session.options.pcUser, "12345678901234567890");
    EXPECT_EQ(w.session.options.computerName, "A_2345678901234");
    EXPECT_EQ(w.session.options.workGroup, "G23456789012345");
  }
}

TEST(LeftBytes, CutsByBytesOfTheCodePage) {
  FakeTextServices gbk;
  gbk.codePage = "CP936";
  EXPECT_EQ(LeftBytes(gbk, "中文名", 5, CutMode::kLeaveOut), "中文");
  EXPECT_EQ(LeftBytes(gbk, "中文名", 5, CutMode::kTakeWhole), "中文名");
  EXPECT_EQ(LeftBytes(gbk, "a中文", 3, CutMode::kTakeWhole), "a中");
}

TEST(ImageList, ShowsSixColumnsAndMakesThePickTheSource) {
  Workshop w;
  const auto pick = [&](int row) {
    w.dialogs.modals.push_back([&, row](Form& window) {
      const std::string before = w.form.combo1.text();
      auto& list = Nth<ListView>(window);
      list.select(row);
      EXPECT_EQ(window.defaultButton->enabled(), list.selected() >= 0);
      list.activate();
      EXPECT_EQ(window.unloaded(), list.selected() >= 0);
      EXPECT_EQ(w.form.combo1.text(), before);  // not while the window is open
      if (list.selected() < 0) return;
      EXPECT_THAT(Titles(list), ElementsAre("S74", "S75", "S76", "S50", "S77", "S46"));
      EXPECT_THAT(
          list.rows(),
          ElementsAre(
              ElementsAre("my disc.iso", "D:\\iso\\", "ISO", "5.00GB", "2024-01-02 03:04", "D:"),
              ElementsAre("install.wim", "E:\\", "WIM", "700.00MB", "2023-12-31 23:59", "E:")));
    });
    ShowImageList(w.session);
    return w.form.combo1.text();
  };
  EXPECT_EQ(pick(0), "");
  w.session.search.found = {{"D:\\iso\\my disc.iso", 5ull << 30, "2024-01-02 03:04"},
                            {"E:\\install.wim", 700ull << 20, "2023-12-31 23:59"}};
  EXPECT_EQ(pick(1), "E:\\install.wim");
  w.session.activity = Activity::kInstalling;  // began meanwhile
  EXPECT_EQ(pick(0), "E:\\install.wim");
}

}  // namespace pavoline::testing
