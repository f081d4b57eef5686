#include <gmock/gmock.h>

#include "support/workshop.h"
#include "ui/controls.h"
#include "ui/small_windows.h"

namespace pavoline::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// diskpart by its effect: drive V: comes with "Attach", and goes with "Detach".
struct DiskWorkshop : Workshop {
  DiskWorkshop() {
    processes.onStart("diskpart", [this](ToolRun& run) {
      const std::string script = files.text("C:\\Windows\\temp\\vhd.txt");
      scripts.push_back(script);
      if (!works) return;
      run.does(100, [this, script] {
        if (script.find("Detach") != std::string::npos) drives.remove("V:");
        if (script.find("Attach") != std::string::npos) drives.add("V:");
      });
    });
  }
  void inWindow(std::function<void(Form&)> act) {
    dialogs.modals.push_back(std::move(act));
    ShowVirtualDiskWindow(session);
  }
  // Fills the creation window and presses its button.
  void create(std::function<void(Form&)> fill) {
    inWindow([&](Form& window) {
      dialogs.modals.push_back([&](Form& creation) {
        Nth<TextBox>(creation, 0).setText("D:\\disk.vhd");
        fill(creation);
        ButtonWith(creation, "S99").press();
        stayedOpen = !creation.unloaded();
      });
      ButtonWith(window, "S90").press();
    });
  }
  std::vector<std::string> heard() const {
    std::vector<std::string> texts;
    for (const auto& shown : dialogs.messages) texts.push_back(shown.text);
    return texts;
  }

  bool works = true;
  bool stayedOpen = false;
  std::vector<std::string> scripts;
};

TEST(VirtualDiskWindow, AttachesAndDetachesTheChosenFile) {
  const struct {
    std::string button;
    bool works;
    std::string title, message, messageTitle;
  } cases[] = {{"S88", true, "S80", "S83 D:\\a.vhd", "S84"},
               {"S88", false, "S80", "S82", "S8"},
               {"S89", true, "S85", "S87 D:\\a.vhd", "S84"},
               {"S89", false, "S85", "S86", "S8"}};
  for (const auto& c : cases) {
    DiskWorkshop w;
    w.works = c.works;
    if (c.button == "S89") w.drives.add("V:");
    w.dialogs.files = {"D:\\a.vhd"};
    w.inWindow([&](Form& window) { ButtonWith(window, c.button).press(); });
    ASSERT_EQ(w.dialogs.openRequests.size(), 1u);
    EXPECT_EQ(w.dialogs.openRequests[0].title, c.title);
    EXPECT_EQ(w.dialogs.openRequests[0].filters.at(0).patterns, "*.vhd;*.vhdx");
    ASSERT_EQ(w.dialogs.messages.size(), 1u);
    EXPECT_EQ(w.dialogs.messages[0].text, c.message);
    EXPECT_EQ(w.dialogs.messages[0].title, c.messageTitle);
    // The choosers are filled anew when drives have come or gone.
    EXPECT_EQ(w.processes.ranLike("CxDir.exe"), c.works);
  }
}

TEST(VirtualDiskWindow, RunsNothingWithoutAFileAndNothingTwice) {
  DiskWorkshop w;
  w.inWindow([](Form& window) { ButtonWith(window, "S88").press(); });
  EXPECT_TRUE(w.scripts.empty());
  EXPECT_TRUE(w.dialogs.messages.empty());

  w.session.osVersion = 6.1F;
  w.dialogs.files = {"D:\\a.vhd", "D:\\b.vhd"};
  w.inWindow([&](Form& window) {
    w.time.after(50, [&] {
      ButtonWith(window, "S88").press();
      EXPECT_FALSE(window.close());
    });
    ButtonWith(window, "S88").press();
    EXPECT_TRUE(window.close());
  });
  EXPECT_EQ(w.scripts.size(), 1u);
  EXPECT_EQ(w.dialogs.openRequests.back().filters.at(0).patterns, "*.vhd");
}

TEST(VirtualDiskWindow, KeepsEnteredPartitionsOverTheRefilling) {
  DiskWorkshop w;
  w.form.text[kBootPartition].setText("D:");
  w.form.text[kInstallPartition].setText("V:");
  w.drives.add("V:");
  w.files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
  w.processes.onStart("CxDir.exe", [](ToolRun& run) {
    run.print(1, "1:2\tE:\t100.00GB\tNTFS\tPrimary\tDisk\tWork\tMBR\t1\r\n");
  });
  w.dialogs.files = {"D:\\a.vhd"};
  w.inWindow([](Form& window) { ButtonWith(window, "S89").press(); });
  EXPECT_EQ(w.form.text[kBootPartition].text(), "D:");     // not in the list, but there
  EXPECT_EQ(w.form.text[kInstallPartition].text(), "E:");  // its drive has gone
  EXPECT_EQ(w.session.installRows.size(), 1u);
}

TEST(VirtualDiskCreation, BuildsTheDiskThatWasEntered) {
  DiskWorkshop w;
  w.create([](Form& creation) {
    EXPECT_EQ(creation.caption(), "S91");
    Nth<OptionButton>(creation, 1).setChosen(true);  // VHDX
    EXPECT_FALSE(Nth<OptionButton>(creation, 0).chosen());
    EXPECT_EQ(Nth<TextBox>(creation, 0).text(), "D:\\disk.vhdx");
    Nth<TextBox>(creation, 1).setText("2");
    Nth<OptionButton>(creation, 3).setChosen(true);  // expandable
    EXPECT_FALSE(Nth<OptionButton>(creation, 2).chosen());
    Nth<TextBox>(creation, 2).setText("Work");
  });
  EXPECT_FALSE(w.stayedOpen);
  ASSERT_EQ(w.scripts.size(), 1u);
  EXPECT_THAT(
      w.scripts[0],
      HasSubstr(
          "Create vdisk file=\"D:\\disk.vhdx\" maximum 2048 type=Expandable\r\n"
          "Select vdisk file=\"D:\\disk.vhdx\"\r\nAttach vdisk\r\nCreate partition primary\r\n"
          "Format FS=NTFS LABEL=Work quick\r\nAssign letter=V\r\nExit"));
  EXPECT_THAT(w.heard(), ElementsAre(HasSubstr("S108 Work\r\nS109 V:")));
  EXPECT_TRUE(w.processes.ranLike("CxDir.exe"));

  DiskWorkshop fixed;
  fixed.create([](Form& creation) {
    Nth<OptionButton>(creation, 1).setChosen(true);
    Nth<OptionButton>(creation, 0).setChosen(true);  // VHD again
    EXPECT_EQ(Nth<TextBox>(creation, 0).text(), "D:\\disk.vhd");
    Nth<OptionButton>(creation, 2).setChosen(true);  // fixed
    Nth<ComboBox>(creation).select(0);               // MB
    Nth<TextBox>(creation, 1).setText("512");
  });
  ASSERT_EQ(fixed.scripts.size(), 1u);
  EXPECT_THAT(fixed.scripts[0], HasSubstr("file=\"D:\\disk.vhd\" maximum 512 type=Fixed\r\n"));
}

TEST(VirtualDiskCreation, RefusesWhatCannotBeMadeAndStaysOpen) {
  const auto file = [](const char* path) {
    return [path](Form& creation) { Nth<TextBox>(creation, 0).setText(path); };
  };
  const auto size = [](const char* text, int unit) {
    return [=](Form& creation) {
      Nth<TextBox>(creation, 1).setText(text);
      Nth<ComboBox>(creation).select(unit);
    };
  };
  const struct {
    std::function<void(Form&)> fill;
    std::string message;
  } cases[] = {
      {file(""), "S105"},           {file("D:\\missing\\a.vhd"), "S105"},
      {file("Q:\\a.vhd"), "S105"},  {file("D:\\"), "S100"},
      {file("D:\\a?.vhd"), "S100"}, {file("D:\\a\"b.vhd"), "S100"},
      {size("", 1), "S101"},        {size("abc", 1), "S101"},
      {size("0", 1), "S101"},       {size("-1", 1), "S101"},
      {size("1e9", 1), "S101"},     {size("٣", 1), "S101"},
      {size("1000", 2), "S106"},    {size("101", 1), "S107"},
  };
  for (const auto& c : cases) {
    DiskWorkshop w;
    w.create(c.fill);
    EXPECT_THAT(w.heard(), ElementsAre(c.message));
    EXPECT_TRUE(w.stayedOpen) << c.message;
    EXPECT_TRUE(w.scripts.empty()) << c.message;
    EXPECT_FALSE(w.processes.ranLike("CxDir.exe"));
  }

  DiskWorkshop noLetter;
  for (const char letter : std::string("VZYWTSRQPONMLKJIHG")) {
    noLetter.drives.add(std::string(1, letter) + ":");
  }
  noLetter.create([](Form&) {});
  EXPECT_THAT(noLetter.heard(), ElementsAre("S104"));

  DiskWorkshop broken;
  broken.works = false;
  broken.create([](Form&) {});
  EXPECT_THAT(broken.heard(), ElementsAre("S102"));
  EXPECT_TRUE(broken.stayedOpen);
}

TEST(VirtualDiskCreation, OffersTheFormatsOfTheSystem) {
  DiskWorkshop w;
  w.session.osVersion = 6.1F;
  w.dialogs.savedFiles = {"D:\\new", "D:\\other.vhd", ""};
  w.create([&](Form& creation) {
    EXPECT_FALSE(Nth<OptionButton>(creation, 1).enabled());
    auto& browse = ButtonWith(creation, "...");
    browse.press();
    EXPECT_EQ(w.dialogs.saveRequests.back().filters.at(0).patterns, "*.vhd;*.vhdx");
    EXPECT_EQ(w.dialogs.saveRequests.back().initialFolder, "D:");
    EXPECT_EQ(Nth<TextBox>(creation, 0).text(), "D:\\new.vhd");
    Nth<OptionButton>(creation, 1).setChosen(true);
    browse.press();
    EXPECT_EQ(w.dialogs.saveRequests.back().filters.at(0).patterns, "*.vhdx;*.vhd");
    EXPECT_EQ(Nth<TextBox>(creation, 0).text(), "D:\\other.vhdx");
    browse.press();  // cancelled
    EXPECT_EQ(Nth<TextBox>(creation, 0).text(), "D:\\other.vhdx");
  });
}

}  // namespace
}  // namespace pavoline::testing
