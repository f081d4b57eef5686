#include <gmock/gmock.h>

#include "support/workshop.h"
#include "ui/controls.h"
#include "ui/small_windows.h"

namespace pavoline::testing {

using namespace ::testing;

// diskpart by its effect: drive V: comes with "Attach", and goes with "Detach".
struct DiskWorkshop : Workshop {
  DiskWorkshop() {
    processes.onStart("diskpart.exe /S", [this](ToolRun& run) {
      const std::string script = files.text("C:\\Windows\\temp\\vhd.txt");
      scripts.push_back(script);
      if (!works) return;
      run.endsAt(100);
      time.after(100 + delayMs, [this, script] {
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

  bool works = true;
  long delayMs = 0;  // until the drive comes or goes after diskpart's end
  bool stayedOpen = false;
  std::vector<std::string> scripts;
};

TEST(VirtualDiskWindow, AttachesAndDetachesTheChosenFile) {
  using Case = std::tuple<bool, long, const char*>;
  for (const auto& [attach, delay, message] :
       {Case{true, 0, "S83 D:\\a b.vhd|S84|64"}, Case{true, 4500, "S83 D:\\a b.vhd|S84|64"},
        Case{true, -1, "S82|S8|64"}, Case{false, 0, "S87 D:\\a b.vhd|S84|64"},
        Case{false, -1, "S86|S8|64"}}) {
    DiskWorkshop w;
    w.works = delay >= 0;
    w.delayMs = delay;
    if (!attach) w.drives.add("V:");
    w.dialogs.files = {"D:\\a b.vhd"};
    w.inWindow([&](Form& window) { ButtonWith(window, attach ? "S88" : "S89").press(); });
    EXPECT_THAT(w.scripts,
                ElementsAre("Select vdisk file=\"D:\\a b.vhd\"\r\n" +
                            std::string(attach ? "Attach" : "Detach") + " vdisk\r\nExit\r\n"));
    EXPECT_THAT(w.heard(), ElementsAre(message));
    EXPECT_TRUE(w.processes.ranLike("CxDir.exe"));  // whatever diskpart reported
  }
}

TEST(VirtualDiskWindow, RunsNothingTwiceAndKeepsEnteredPartitionsThatAreThere) {
  DiskWorkshop w;
  w.inWindow([](Form& window) { ButtonWith(window, "S88").press(); });
  EXPECT_TRUE(w.scripts.empty() && w.dialogs.messages.empty());  // no file was chosen

  w.session.osVersion = 6.1F;
  w.form.text[kBootPartition].setText("D:");
  w.form.text[kInstallPartition].setText("V:");
  w.drives.add("V:");
  w.files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
  w.processes.onStart("CxDir.exe", [](ToolRun& run) {
    run.print(1, "1:2\tE:\t100.00GB\tNTFS\tPrimary\tDisk\tWork\tMBR\t1\r\n");
  });
  w.dialogs.files = {"D:\\a.vhd", "D:\\b.vhd"};
  w.inWindow([&](Form& window) {
    w.time.after(50, [&] {
      ButtonWith(window, "S88").press();
      ButtonWith(window, "S90").press();
      EXPECT_FALSE(window.close());
      EXPECT_EQ(w.session.activity, Activity::kVirtualDisk);
    });
    ButtonWith(window, "S89").press();
    EXPECT_TRUE(window.close());
  });
  EXPECT_EQ(w.scripts.size(), 1u);
  EXPECT_EQ(w.dialogs.openRequests.back().filters.at(0).patterns, "*.vhd");
  EXPECT_EQ(w.form.text[kBootPartition].text(), "D:");     // not in the list, but there
  EXPECT_EQ(w.form.text[kInstallPartition].text(), "E:");  // its drive has gone
}

TEST(VirtualDiskCreation, BuildsTheDiskThatWasEntered) {
  DiskWorkshop w;
  w.dialogs.savedFiles = {"D:\\new"};
  w.create([](Form& creation) {
    ButtonWith(creation, "...").press();
    EXPECT_EQ(Nth<TextBox>(creation, 0).text(), "D:\\new.vhd");
    Nth<OptionButton>(creation, 1).setChosen(true);  // VHDX
    EXPECT_FALSE(Nth<OptionButton>(creation, 0).chosen());
    Nth<TextBox>(creation, 1).setText("2");
  });
  EXPECT_FALSE(w.stayedOpen);
  EXPECT_THAT(w.scripts.at(0), HasSubstr("\"D:\\new.vhdx\" maximum 2048 type=Expandable\r\n"));
  EXPECT_THAT(w.scripts[0], HasSubstr("FS=NTFS quick\r\nAssign letter=V\r\n"));
  EXPECT_THAT(w.heard(), ElementsAre("S108 \r\nS109 V:|S84|64"));

  w.works = false;  // and the next letter does not come up
  w.session.osVersion = 6.1F;
  w.create([](Form& creation) {
    EXPECT_FALSE(Nth<OptionButton>(creation, 1).enabled());
    Nth<OptionButton>(creation, 2).setChosen(true);  // fixed
    Nth<ComboBox>(creation).select(0);               // MB
  });
  EXPECT_THAT(w.scripts.at(1), HasSubstr("\"D:\\disk.vhd\" maximum 40 type=Fixed\r\n"));
  EXPECT_EQ(w.heard().back(), "S102||16");
  EXPECT_TRUE(w.stayedOpen);
}

TEST(VirtualDiskCreation, RefusesWithTheFirstReasonAndStaysOpen) {
  const std::tuple<const char*, const char*, int, std::string> cases[] = {
      {"D:\\none\\?", "x", 1, "S105|S12|16"}, {"Q:\\a.vhd", "1", 1, "S105|"},
      {"Bin\\a.vhd", "1", 1, "S105|"},        {"E:\\a?.vhd", "x", 1, "S100|Tips:|16"},
      {"E:\\a", "x", 1, "S101|Tips:|16"},     {"E:\\a", "1000", 2, "S106|Tips:|16"},
      {"E:\\a", "5", 1, "S107|S12|16"},       {"E:\\a", "5119", 0, "S104|S12|16"}};
  for (const auto& [file, size, unit, message] : cases) {
    DiskWorkshop w;
    w.drives.add("E:", kDriveFixed, {}, (std::uint64_t{5} << 30) - 1);
    for (const char letter : std::string("VZYWTSRQPONMLKJIHG")) {
      if (unit == 0) w.drives.add(std::string(1, letter) + ":");
    }
    w.create([&, path = file, text = size, index = unit](Form& creation) {
      Nth<TextBox>(creation, 0).setText(path);
      Nth<TextBox>(creation, 1).setText(text);
      Nth<ComboBox>(creation).select(index);
    });
    EXPECT_THAT(w.heard(), ElementsAre(HasSubstr(message))) << file << " " << size;
    EXPECT_TRUE(w.stayedOpen && w.scripts.empty()) << message;
  }
}

}  // namespace pavoline::testing
