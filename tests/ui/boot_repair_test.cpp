#include <gmock/gmock.h>

#include "support/workshop.h"
#include "ui/system_menu.h"

namespace pavoline::testing {

using namespace ::testing;

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
  for (const auto& [bios, uefi, report] : {std::tuple{true, true, "S69 S:\n[ BIOS + UEFI ] |S8|64"},
                                           {true, false, "S69 S:\n[ BIOS ] |S8|64"},
                                           {false, true, "S69 S:\n[ UEFI ] |S8|64"},
                                           {false, false, "S69 S:\n[  ] |S8|64"}}) {
    RepairWorkshop w;
    bool lockedWhileRunning = false;
    w.processes.onStart("bcdboot.exe", [&](ToolRun& run) {
      lockedWhileRunning = !w.form.command1[kStart].enabled() && w.session.starting;
      const bool forUefi = run.line.find("/f uefi") != std::string::npos;
      if (forUefi && uefi) w.files.put("S:\\EFI\\Microsoft\\Boot\\bcd");
      if (!forUefi && bios) w.files.put("S:\\boot\\bcd");
    });
    w.repair();
    EXPECT_THAT(w.heard(), ElementsAre(StartsWith("S68 S:\n\nS18|S8|"), report));
    EXPECT_THAT(w.processes.ran,
                ElementsAre(HasSubstr("E:\\Windows /s"), HasSubstr("E:\\Windows /s"),
                            HasSubstr("D:\\Windows /s"), HasSubstr("D:\\Windows /s"),
                            HasSubstr("bootsect.exe /nt60 S: /mbr")));
    EXPECT_TRUE(lockedWhileRunning && w.form.command1[kStart].enabled());
    EXPECT_FALSE(w.session.starting || w.session.bootRepairRequested);
    EXPECT_EQ(w.form.status.text(), "S1");
  }
}

TEST(BootRepair, TouchesNothingWhenItMustNotRun) {
  using Arrange = std::function<void(RepairWorkshop&)>;
  const std::tuple<const char*, Arrange, std::vector<std::string>> cases[] = {
      {"cancelled", [](auto& w) { w.dialogs.answers = {2}; }, {"S68 S:\n\nS18|S8|49"}},
      {"list not read yet", [](auto& w) { w.form.setTag("0"); }, {"S45|Initializing...|64"}},
      {"no boot partition",
       [](auto& w) { w.form.text[kBootPartition].setText(""); },
       {"S15 |S12|16"}},
      {"boot partition gone", [](auto& w) { w.drives.remove("S:"); }, {"S15 S:|S12|16"}},
      {"installing", [](auto& w) { w.form.busy = true; }, {}},
      {"Start asks", [](auto& w) { w.session.starting = true; }, {}},
      {"unattended Start is due", [](auto& w) { w.session.commandLine.install = true; }, {}},
      {"Quillet", [](auto& w) { w.files.put("X:\\Quillet\\Quillet.exe"); }, {}}};
  for (const auto& [why, arrange, messages] : cases) {
    RepairWorkshop w;
    arrange(w);
    w.repair();
    EXPECT_EQ(w.heard(), messages) << why;
    EXPECT_FALSE(w.processes.ranLike("bcdboot") || w.processes.ranLike("bootsect")) << why;
    EXPECT_EQ(w.processes.ranLike("Quillet"), why == std::string("Quillet"));
    EXPECT_TRUE(w.form.command1[kStart].enabled() && !w.session.bootRepairRequested) << why;
    EXPECT_EQ(w.files.text("S:\\boot\\bcd"), w.files.exists("S:") ? "old" : "") << why;
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

}  // namespace pavoline::testing
