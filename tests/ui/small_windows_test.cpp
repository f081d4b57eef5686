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
    drives.add("D:", kDriveFixed, VolumePosition{2, 1}, 3ull << 28);
    drives.slow = {"E:"};
    drives.add("", kDriveFixed, {}, 1);  // the current folder's
    drives.add("E:", kDriveFixed, VolumePosition{2, 2});
    form.text[kInstallPartition].setText("E:");
  }
  // Opens the chooser, lets the person act in it and returns the letter that the field has then.
  std::string choose(PartitionListKind kind, std::function<void(Form&, ListView&)> act) {
    dialogs.modals.push_back([act](Form& window) { act(window, Nth<ListView>(window)); });
    ShowPartitionChooser(session, kind);
    return form.text[kind == PartitionListKind::kBoot ? kBootPartition : kInstallPartition].text();
  }

  std::string listing =
      "1:1\tS:\t260.00MB\tFAT32\tEFI\tDisk A\tSystem\tGPT\t0\r\n"
      "2:1\tD:\t100.00GB\tNTFS\tPrimary\tDisk B\tData\tMBR\t1\r\n"
      "2:2\tE:\t365.76GB\tNTFS\tPrimary\tDisk B\tWork\tMBR\t0\r\n";
};

TEST(PartitionChooser, ListsAfreshAndTakesARow) {
  ChooserWorkshop w;
  const auto choose = [](Form& window, ListView& list) {
    EXPECT_THAT(
        list.rows(),
        ElementsAre(ElementsAre("D:", "Data", "Disk B", "NTFS", "100.00GB", "1", "768.00MB"),
                    ElementsAre("E:", "Work", "Disk B", "NTFS", "365.76GB", "1",
                                "")));  // a slow one
    EXPECT_EQ(list.selected(), 1);
    for (const int row : {-1, 0}) {
      list.select(row);
      ButtonWith(window, "Ok").press();
      EXPECT_EQ(window.unloaded(), row == 0);
    }
  };
  EXPECT_EQ(w.choose(PartitionListKind::kInstall, choose), "D:");
  EXPECT_EQ(w.processes.ran.size(), 1u);
  w.session.activity = Activity::kReadingSource;  // its tool is not disturbed by another
  EXPECT_EQ(w.choose(PartitionListKind::kBoot, [](auto&, auto&) {}), "D:");
  EXPECT_EQ(w.processes.ran.size(), 1u);

  w.session.activity = Activity::kIdle;
  // One without a letter is chosen by an empty field, which stays so when the list is made anew.
  w.listing =
      "2:2\tE:\t365.76GB\tNTFS\tPrimary\tDisk B\tWork\tGPT\t0\r\n"
      "2:1\t\t260.00MB\tFAT32\tEFI\tDisk B\tESP\tGPT\t0\r\n"
      "1:1\tS:\t260.00MB\tFAT32\tEFI\tDisk A\tSystem\tGPT\t0\r\n";
  w.form.text[kInstallPartition].setText("E:");
  w.form.text[kBootPartition].setText("S:");
  const auto takeLetterless = [](Form& window, ListView& list) {
    EXPECT_EQ(list.rows().back(), (std::vector<std::string>{"Letterless", "ESP", "Disk B", "FAT32",
                                                            "260.00MB", "1", ""}));
    list.select(1);
    ButtonWith(window, "Ok").press();
  };
  EXPECT_EQ(w.choose(PartitionListKind::kBoot, takeLetterless), "");
  EXPECT_EQ(w.choose(PartitionListKind::kInstall, [](auto&, auto&) {}), "E:");
  EXPECT_EQ(w.form.text[kBootPartition].text(), "");
  EXPECT_EQ(w.form.facts[kBootPartition].text(),
            "Letterless VolumeFacts ESP 260.00MB FAT32 Disk B");

  w.listing = "";
  const auto nothing = [](Form& window, ListView& list) {
    EXPECT_FALSE(list.visible() || window.defaultButton->enabled());
    EXPECT_EQ(Nth<Label>(window).text(), "NoPartition");
  };
  EXPECT_EQ(w.choose(PartitionListKind::kInstall, nothing), "E:");
  const auto shown = w.dialogs.shownForms.size();
  w.time.after(1, [&] { w.form.unload(); });  // while it lists
  w.choose(PartitionListKind::kInstall, nothing);
  EXPECT_EQ(w.dialogs.shownForms.size(), shown);
}

TEST(ComputerNameDialog, FiltersTypingAndCutsTheNamesHoweverItIsClosed) {
  Workshop w;
  for (const bool byEscape : {true, false}) {  // else from outside
    w.session.options.pcUser = "Ann";
    w.dialogs.modals.push_back([&](Form& window) {
      auto& user = Nth<ComboBox>(window);
      auto &computer = Nth<TextBox>(window, 0), &group = Nth<TextBox>(window, 1);
      EXPECT_EQ(user.text(), "Ann");
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
    const InstallOptions& kept = w.session.options;
    EXPECT_EQ(kept.pcUser + " " + kept.computerName + " " + kept.workGroup,
              "12345678901234567890 A_2345678901234 G23456789012345");
  }
}

}  // namespace pavoline::testing
