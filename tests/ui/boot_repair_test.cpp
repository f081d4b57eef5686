#include <gmock/gmock.h>

#include "support/workshop.h"
#include "ui/system_menu.h"

namespace pavoline::testing {
namespace {

using ::testing::ElementsAre;

constexpr char kBcdboot[] = "X:\\Pavoline\\Bin\\Boot\\x64\\bcdboot.exe";
constexpr char kBootsect[] = "X:\\Pavoline\\Bin\\Boot\\x64\\bootsect.exe";

// Two installed systems, the running one, and a boot partition S: with old boot stores.
struct RepairWorkshop : Workshop {
  RepairWorkshop() {
    drives.add("S:");
    files.put("S:\\boot\\bcd", "old");
    files.put("S:\\EFI\\Microsoft\\Boot\\bcd", "old");
    for (const char* drive : {"D:", "E:", "X:"}) {
      files.folder(std::string(drive) + "\\Windows");
      session.partitions.push_back({std::string("1:1\t") + drive});
    }
    files.put(kBcdboot);
    files.put(kBootsect);
    form.text[kBootPartition].setText("S:");
    form.setTag("2");
    BuildSystemMenu(session);
  }

  void repair() { EXPECT_TRUE(HandleSystemCommand(session, kMenuBootRepair)); }
};

TEST(BootRepair, RebuildsForEveryWindowsAndReportsTheStores) {
  const struct {
    bool bios, uefi;
    std::string report;
  } cases[] = {{true, true, "S69 S:\n[ BIOS + UEFI ] "},
               {true, false, "S69 S:\n[ BIOS ] "},
               {false, true, "S69 S:\n[ UEFI ] "},
               {false, false, "S69 S:\n[  ] "}};
  for (const auto& c : cases) {
    RepairWorkshop w;
    bool lockedWhileRunning = false;
    w.processes.onStart("bcdboot.exe", [&](ToolRun& run) {
      lockedWhileRunning = !w.form.command1[kStart].enabled() && w.session.starting;
      const bool uefi = run.line.find("/f uefi") != std::string::npos;
      if (uefi ? !c.uefi : !c.bios) return;
      run.does(
          10, [&, uefi] { w.files.put(uefi ? "S:\\EFI\\Microsoft\\Boot\\bcd" : "S:\\boot\\bcd"); });
    });
    w.repair();
    ASSERT_EQ(w.dialogs.messages.size(), 2u);
    EXPECT_EQ(w.dialogs.messages[0].text, "S68 S:\n\nS18");
    EXPECT_EQ(w.dialogs.messages[0].title, "S8");
    EXPECT_EQ(w.dialogs.messages[1].text, c.report);

    std::vector<std::string> order;
    for (const auto& started : w.processes.started) {
      const auto windows = started.command.find(":\\Windows /s");
      if (windows != std::string::npos) order.push_back(started.command.substr(windows - 1, 2));
    }
    EXPECT_THAT(order, ElementsAre("E:", "E:", "D:", "D:"));
    EXPECT_TRUE(w.processes.ranLike("bootsect.exe /nt60 S: /mbr"));
    EXPECT_TRUE(lockedWhileRunning);
    EXPECT_TRUE(w.form.command1[kStart].enabled());
    EXPECT_FALSE(w.session.starting || w.session.bootRepairRequested);
    EXPECT_EQ(w.form.status.text(), "S1");
  }
}

TEST(BootRepair, TouchesNothingWhenItMustNotRun) {
  const struct {
    const char* why;
    std::function<void(RepairWorkshop&)> arrange;
    std::string message;
  } cases[] = {
      {"cancelled", [](RepairWorkshop& w) { w.dialogs.answerTo("S68", 2); }, "S68 S:\n\nS18"},
      {"list not read yet", [](RepairWorkshop& w) { w.form.setTag("0"); }, "S45"},
      {"no boot partition", [](RepairWorkshop& w) { w.form.text[kBootPartition].setText(""); },
       "S15 "},
      {"boot partition gone", [](RepairWorkshop& w) { w.drives.remove("S:"); }, "S15 S:"},
      {"installing", [](RepairWorkshop& w) { w.form.busy = true; }, ""},
      {"Start asks", [](RepairWorkshop& w) { w.session.starting = true; }, ""},
      {"unattended Start is due", [](RepairWorkshop& w) { w.session.commandLine.install = true; },
       ""},
      {"the other tool is there",
       [](RepairWorkshop& w) { w.files.put("X:\\Quillet\\Quillet.exe"); }, ""},
  };
  for (const auto& c : cases) {
    RepairWorkshop w;
    c.arrange(w);
    w.repair();
    std::string messages;
    for (const auto& shown : w.dialogs.messages) messages += shown.text;
    EXPECT_EQ(messages, c.message) << c.why;
    EXPECT_FALSE(w.processes.ranLike("bcdboot")) << c.why;
    EXPECT_FALSE(w.processes.ranLike("bootsect")) << c.why;
    EXPECT_EQ(w.processes.ranLike("Quillet"), w.files.exists("X:\\Quillet\\Quillet.exe")) << c.why;
    EXPECT_FALSE(w.session.bootRepairRequested) << c.why;
    EXPECT_TRUE(w.form.command1[kStart].enabled()) << c.why;
    EXPECT_EQ(w.files.text("S:\\boot\\bcd"), w.files.exists("S:") ? "old" : "") << c.why;
  }
}

TEST(BootRepair, StopsWhereItStandsWhenTheProgramIsClosed) {
  RepairWorkshop w;
  w.processes.onStart("bcdboot.exe", [&](ToolRun& run) {
    run.does(10, [&] { w.form.unload(); });
    run.endsAt(5000);
  });
  w.repair();
  EXPECT_EQ(w.dialogs.messages.size(), 1u);
  EXPECT_FALSE(w.processes.ranLike("bootsect"));
}

}  // namespace
}  // namespace pavoline::testing
