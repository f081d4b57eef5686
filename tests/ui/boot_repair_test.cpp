#include <gmock/gmock.h>

#include "support/workshop.h"
#include "ui/system_menu.h"

namespace pavoline::testing {

using namespace ::testing;

constexpr char kBcdboot[] = "X:\\Pavoline\\Bin\\Boot\\x64\\bcdboot.exe";
constexpr char kBios[] = "S:\\boot\\bcd", kUefi[] = "S:\\EFI\\Microsoft\\Boot\\bcd";

// Two installed systems, the running one, and a boot partition S: with old boot stores.
struct RepairWorkshop : Workshop {
  RepairWorkshop() {
    drives.add("S:");
    files.put(kBios, "old");
    files.put(kUefi, "old");
    for (const char* drive : {"D:", "E:", "X:"}) {
      files.folder(std::string(drive) + "\\Windows");
      session.partitions.push_back({std::string("1:1\t") + drive});
    }
    files.put(kBcdboot);
    form.text[kBootPartition].setText("S:");
    form.marks.startupStage = 2;
    BuildSystemMenu(session);
  }

  void repair() { EXPECT_TRUE(HandleSystemCommand(session, kMenuBootRepair)); }
  std::string stores() { return files.text(kBios) + " " + files.text(kUefi); }
};

TEST(BootRepair, AsksThenReportsWhichStoresAreThere) {
  using Case = std::tuple<std::string, std::string, std::string>;
  for (const auto& [before, fails, report] :
       {Case{"old", "", "BootReport S:\n[ BIOS + UEFI ] |Information|64"},
        Case{"", "bios", "BootReport S:\n[ UEFI ] |Information|64"},
        Case{"old", "bcdboot", "BootPutBack\nBootReport S:\n[ BIOS + UEFI ] |Information|48"},
        Case{"", "bcdboot", "BootPutBack\nBootReport S:\n[  ] |Information|48"}}) {
    RepairWorkshop w;
    if (before.empty()) w.files.drop(kBios), w.files.drop(kUefi);
    w.processes.onStart("bcdboot.exe", [&, part = fails](ToolRun& run) {
      EXPECT_FALSE(w.form.command1[kStart].enabled());
      EXPECT_EQ(w.session.activity, Activity::kRepairingBoot);
      const bool uefi = run.line.find("/f uefi") != std::string::npos;
      if (!part.empty() && run.line.find(part) != std::string::npos) return;
      run.does(10, [&w, uefi] { w.files.put(uefi ? kUefi : kBios, "new"); });
    });
    w.repair();
    EXPECT_THAT(w.heard(),
                ElementsAre("ConfirmBootRepair S:\n\nConfirmTail|Information|49", report));
    EXPECT_TRUE(w.form.command1[kStart].enabled());
    EXPECT_EQ(w.form.status.text(), "StatusWide");
  }
}

TEST(BootRepair, TouchesNothingWhenItMustNotRun) {
  using Arrange = std::function<void(RepairWorkshop&)>;
  const std::tuple<const char*, Arrange, std::vector<std::string>> cases[] = {
      {"cancelled",
       [](auto& w) { w.dialogs.answers = {kAnswerCancel}; },
       {"ConfirmBootRepair S:\n\nConfirmTail|Information|49"}},
      {"closed over the question",
       [](auto& w) { w.dialogs.onMessage = [&](const auto&) { w.form.unload(); }; },
       {"ConfirmBootRepair S:\n\nConfirmTail|Information|49"}},
      {"list not read yet",
       [](auto& w) { w.form.marks.startupStage = 0; },
       {"ListNotReady|Initializing...|64"}},
      {"boot partition gone", [](auto& w) { w.drives.remove("S:"); }, {"BootMissing S:|Error|16"}},
      {"no Windows",
       [](auto& w) { w.files.drop("D:\\Windows"), w.files.drop("E:\\Windows"); },
       {"NothingToRepair|Information|48"}},
      {"no bcdboot",
       [](auto& w) { w.files.drop(kBcdboot), w.files.drop("C:\\Windows\\System32\\bcdboot.exe"); },
       {"NothingToRepair|Information|48"}},
      {"Quillet", [](auto& w) { w.files.put("X:\\Quillet\\Quillet.exe"); }, {}}};
  for (const auto& [why, arrange, messages] : cases) {
    RepairWorkshop w;
    arrange(w);
    w.repair();
    EXPECT_EQ(w.heard(), messages) << why;
    EXPECT_FALSE(w.processes.ranLike("bcdboot") || w.processes.ranLike("bootsect")) << why;
    EXPECT_EQ(w.files.text("C:\\Windows\\temp\\Pavoline.log").find("boot files on"),
              std::string::npos);
    EXPECT_EQ(w.processes.ranLike("Quillet"), why == std::string("Quillet"));
    EXPECT_TRUE(w.form.command1[kStart].enabled()) << why;
    EXPECT_EQ(w.stores(), w.files.exists("S:") ? "old old" : " ") << why;
  }
}

TEST(BootRepair, StopsWhenTheProgramIsClosedAndLeavesTheOldStores) {
  RepairWorkshop w;
  w.processes.onStart("bcdboot.exe", [&](ToolRun& run) { run.does(10, [&] { w.form.unload(); }); });
  w.repair();
  EXPECT_EQ(w.dialogs.messages.size() + w.processes.ran.size(), 2u);
  EXPECT_EQ(w.stores(), "old old");
}

}  // namespace pavoline::testing
