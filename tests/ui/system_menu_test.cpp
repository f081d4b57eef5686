#include "ui/system_menu.h"

#include <gmock/gmock.h>

#include <set>

#include "session/activity_scope.h"
#include "support/workshop.h"

namespace pavoline::testing {

using namespace ::testing;

constexpr char kHome[] = "X:\\Programs\\Pavoline";

// The program one folder deeper, so that others can lie beside it.
struct MenuWorkshop : Workshop {
  MenuWorkshop() {
    session.paths.appDir = kHome;
    session.paths.appParentDir = "X:\\Programs";
    form.marks.startupStage = 2;
    BuildSystemMenu(session);
  }

  bool choose(int id) { return HandleSystemCommand(session, id); }
  std::vector<std::string> texts(const std::vector<MenuItem>& items) const {
    std::vector<std::string> result;
    for (const MenuItem& item : items) {
      const std::string line = std::to_string(item.id) + " " + item.text;
      result.push_back(item.separator() ? "-" : line + (item.checked ? "!" : ""));
    }
    return result;
  }
  // Those that do something and are not grey.
  std::set<int> open(const std::vector<MenuItem>& items) const {
    std::set<int> result;
    for (const MenuItem& item : items) {
      if (item.items.empty() && !item.separator() && item.enabled) result.insert(item.id);
      result.merge(open(item.items));
    }
    return result;
  }
};

TEST(SystemMenu, ListsAndStartsTheToolsThatAreThere) {
  MenuWorkshop w;
  const auto tools = [&] {
    BuildSystemMenu(w.session);
    return w.texts(w.form.systemMenu().at(3).items);
  };
  EXPECT_THAT(tools(), ElementsAre("2011 BootRepairMenu(&R)"));
  for (const char* path : {"\\Quillet.exe", "\\Bin\\Ghost\\x64\\ghost.exe", "\\Brantor.exe",
                           "\\..\\Brantor\\Brantor.exe", "\\..\\DiskGenius\\DiskGenius.exe"}) {
    w.files.put(w.files.fullPath(kHome + std::string(path)));
  }
  EXPECT_THAT(tools(), ElementsAre("2010 Brantor\tCtrl+B", "2011 Quillet\tCtrl+R",
                                   "2013 DiskGenius\tCtrl+D", "2012 Ghost\tCtrl+G"));
  w.session.language = 2052;
  EXPECT_THAT(tools(), Contains("2010 系统备份 \tCtrl+B"));

  w.files.shortNames = false;
  EXPECT_TRUE(w.choose(kMenuBackup) && w.choose(kMenuBootRepair));
  EXPECT_THAT(w.processes.ran,
              ElementsAre(HasSubstr("\\Brantor\\Brantor.exe"),  // from beside the program first
                          HasSubstr("\\Quillet.exe")));
  EXPECT_FALSE(w.form.unloaded());  // only its key lets a tool take the program's place

  const std::set<int> all = w.open(w.form.systemMenu());
  {
    const ActivityScope installing(w.session, Activity::kInstalling);
    EXPECT_THAT(w.open(w.form.systemMenu()), ElementsAre(kMenuHelp, kMenuAbout, kMenuLanguageFile));
    EXPECT_TRUE(w.choose(kMenuPartitions) && w.processes.ran.size() == 2);
  }
  EXPECT_EQ(w.open(w.form.systemMenu()), all);
  w.session.commandLine.dryRun = true;
  BuildSystemMenu(w.session);
  EXPECT_THAT(w.open(w.form.systemMenu()),
              Not(AnyOf(Contains(kMenuVirtualDisk), Contains(kMenuPrepareDisk),
                        Contains(kMenuBootRepair))));
  EXPECT_FALSE(w.choose(0xF060)) << "the system's own";
}

TEST(ApplyModes, SetSwitchTitleAndCheckMark) {
  MenuWorkshop w;
  for (int id = kMenuFirstApplyMode; id < kMenuFirstApplyMode + 7; ++id) {
    EXPECT_TRUE(w.choose(id));
    const auto modes = w.texts(w.form.systemMenu().at(4).items);
    EXPECT_THAT(modes, Contains(HasSubstr("!")).Times(1));
    EXPECT_TRUE(modes.at(id - kMenuFirstApplyMode).ends_with("!"));
  }
  EXPECT_EQ(w.session.apply.options + w.form.caption(), "--compact=lzxPavoline - Compact:LZX");
  w.dialogs.menuChoices = {0, 2020};  // of the menu button
  OpenMenu(w.session);
  EXPECT_EQ(w.form.caption(), "Pavoline - Compact:LZX");
  OpenMenu(w.session);
  EXPECT_EQ(w.session.apply.options + w.form.caption(), "Pavoline");
}

TEST(SystemMenu, SavesTheSettingsAndTheLanguageFileOrSaysThatItCannot) {
  MenuWorkshop w;
  w.session.options.computerName = "OFFICE-7";
  w.choose(kMenuSaveSettings);
  EXPECT_THAT(w.files.text(w.session.paths.settingsPath), HasSubstr("ComputerName=OFFICE-7"));
  w.session.paths.settingsPath = "Q:\\Pavoline.ini";
  w.choose(kMenuSaveSettings);

  w.dialogs.savedFiles = {"", "D:\\mine", "D:\\4100.LNG", "D:\\missing\\1.lng"};
  for (int times = 0; times < 4; ++times) w.choose(kMenuLanguageFile);
  EXPECT_EQ(w.dialogs.saveRequests.at(0).initialFolder, std::string(kHome) + "\\lang\\");
  EXPECT_THAT(w.files.below("D:"), ElementsAre("d:\\4100.lng", "d:\\mine.lng"));
  EXPECT_THAT(w.heard(),
              ElementsAre("SettingsSaved|Information|64", "CannotWrite Q:\\Pavoline.ini|Error|16",
                          "CannotWrite D:\\missing\\1.lng|Error|16"));
}

TEST(SystemMenu, OpensTheHelpWithWhatTheSystemHas) {
  MenuWorkshop w;
  const std::string help = std::string(kHome) + "\\Help\\";
  for (const char* file : {"1031.html", "1033.txt"}) w.files.put(help + file);
  w.files.put("C:\\Windows\\System32\\notepad.exe");
  w.files.shortNames = false;
  w.session.language = 1031;
  w.choose(kMenuHelp);
  EXPECT_THAT(w.dialogs.documents, ElementsAre(help + "1031.html"));
  EXPECT_THAT(w.processes.ran, IsEmpty());
  w.dialogs.opensDocuments = false;
  w.choose(kMenuHelp);
  EXPECT_THAT(w.processes.ran, ElementsAre("notepad.exe \"" + help + "1033.txt\""));
  w.files.drop("C:\\Windows\\System32\\notepad.exe");
  w.choose(kMenuHelp);
  EXPECT_THAT(w.heard(), ElementsAre("PE environment help is not available.|Information|64"));
}

}  // namespace pavoline::testing
