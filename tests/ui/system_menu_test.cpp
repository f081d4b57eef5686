#include "ui/system_menu.h"

#include <gmock/gmock.h>

#include <set>

#include "engine/wim_apply.h"
#include "support/workshop.h"
#include "ui/apply_mode.h"
#include "ui/companion_tools.h"

namespace pavoline::testing {

using namespace ::testing;

constexpr char kHome[] = "X:\\Programs\\Pavoline";

// The program one folder deeper, so that others can lie beside it.
struct MenuWorkshop : Workshop {
  MenuWorkshop() {
    session.paths.appDir = kHome;
    session.paths.appParentDir = "X:\\Programs";
    form.setTag("2");
    BuildSystemMenu(session);
  }

  bool choose(int id) { return HandleSystemCommand(session, id); }

  std::vector<std::string> texts(const std::vector<MenuItem>& items) const {
    std::vector<std::string> result;
    for (const MenuItem& item : items) {
      result.push_back(item.separator() ? "-" : std::to_string(item.id) + " " + item.text);
    }
    return result;
  }
  std::vector<std::string> tools() const { return texts(form.systemMenu().at(3).items); }
  std::vector<int> checkedModes() const {
    std::vector<int> result;
    for (const MenuItem& item : form.systemMenu().at(4).items) {
      if (item.checked) result.push_back(item.id);
    }
    return result;
  }
};

TEST(SystemMenu, StandsAboveTheSystemsItemsInItsOrder) {
  MenuWorkshop w;
  EXPECT_THAT(w.texts(w.form.systemMenu()),
              ElementsAre("2000 S62", "2040 S60\tCtrl+N", "-", "0 S114", "0 S72", "2002 S71(&V)",
                          "-", "2003 S64(&H)", "2004 S65(&A)", "2005 S66", "-"));
  EXPECT_THAT(w.texts(w.form.systemMenu().at(4).items),
              ElementsAre("2020 Normal mode ", "2021 Wimboot", "2022 Wimboot:WIMCOPY",
                          "2023 Compact:XPRESS4K", "2024 Compact:XPRESS8K",
                          "2025 Compact:XPRESS16K", "2026 Compact:LZX"));
  EXPECT_THAT(w.checkedModes(), ElementsAre(2020));
}

TEST(SystemMenu, ListsAndStartsTheToolsThatAreThere) {
  MenuWorkshop w;
  EXPECT_THAT(w.tools(), ElementsAre("2011 S63(&R)"));
  const auto put = [&](const std::string& path) {
    w.files.put(path);
    BuildSystemMenu(w.session);
  };
  for (const char* beside : {"Brantor\\Brantor.exe", "DiskGenius\\DiskGenius.exe"}) {
    put(std::string("X:\\Programs\\") + beside);
  }
  for (const char* inside : {"\\Quillet.exe", "\\Bin\\Ghost\\x64\\ghost.exe"})
    put(kHome + std::string(inside));
  EXPECT_THAT(w.tools(), ElementsAre("2010 Brantor\tCtrl+B", "2011 Quillet\tCtrl+R",
                                     "2013 DiskGenius\tCtrl+D", "2012 Ghost\tCtrl+G"));
  w.environment.thread = 2052;
  put(kHome + std::string("\\Brantor.exe"));
  EXPECT_THAT(w.tools(), ElementsAre("2010 系统备份 \tCtrl+B", "2011 引导修复 \tCtrl+R",
                                     "2013 硬盘分区 \tCtrl+D", "2012 手动运行 \tCtrl+G"));

  w.files.shortNames = false;
  for (const int tool : {kMenuBackup, kMenuBootRepair, kMenuPartitions, kMenuGhost}) w.choose(tool);
  EXPECT_THAT(w.processes.ran,
              ElementsAre(HasSubstr("\\Brantor\\Brantor.exe"),  // from beside the program first
                          HasSubstr("\\Quillet.exe"), HasSubstr("DiskGenius.exe"),
                          HasSubstr("\\x64\\ghost.exe")));
  EXPECT_EQ(w.processes.started[0].mode, ShowMode::kNormal);
  EXPECT_FALSE(w.form.unloaded());  // only its key lets a tool take the program's place
}

TEST(SystemMenu, LeavesOtherNumbersToTheSystem) {
  MenuWorkshop w;
  const std::set<int> own = {2000, 2002, 2003, 2004, 2005, 2010, 2011, 2012,
                             2013, 2020, 2021, 2022, 2023, 2024, 2025, 2026};
  for (int id = 1999; id <= 2027; ++id) {
    EXPECT_EQ(w.choose(id), own.contains(id)) << id;
  }
  EXPECT_TRUE(w.choose(kMenuComputerName));
  EXPECT_FALSE(w.choose(0xF060));  // the system's own Close
}

TEST(ApplyModes, SetSwitchTitleAndCheckMark) {
  MenuWorkshop w;
  w.session.titleCaption = "Sub - Pavoline";
  using Case = std::tuple<int, const char*, std::string>;
  for (const auto& [id, options, suffix] :
       {Case{2021, "--wimboot", " - Wimboot"}, Case{2022, "--wimboot", " - Wimboot:WIMCOPY"},
        Case{2023, "--compact=xpress4k", " - Compact:XPRESS4K"},
        Case{2024, "--compact=xpress8k", " - Compact:XPRESS8K"},
        Case{2025, "--compact=xpress16k", " - Compact:XPRESS16K"},
        Case{2026, "--compact=lzx", " - Compact:LZX"}, Case{2020, "", ""}}) {
    EXPECT_TRUE(w.choose(id));
    EXPECT_EQ(w.session.applyOptions, options);
    EXPECT_EQ(w.session.wimcopy, id == 2022);
    EXPECT_EQ(w.form.caption(), "Sub - Pavoline" + suffix);
    EXPECT_THAT(w.checkedModes(), ElementsAre(id));
  }
}

TEST(SystemMenu, SavesTheSettings) {
  MenuWorkshop w;
  w.session.options.computerName = "OFFICE-7";
  EXPECT_TRUE(w.choose(kMenuSaveSettings));
  EXPECT_THAT(w.files.text(w.session.paths.settingsPath), HasSubstr("ComputerName=OFFICE-7"));
  EXPECT_THAT(w.heard(), ElementsAre("S67|S8|64"));
}

TEST(SystemMenu, OpensVirtualDisksOnlyWhereTheSystemHasThem) {
  const std::tuple<float, bool, bool, bool> cases[] = {{6.1F, true, false, true},
                                                       {6.0F, true, false, false},
                                                       {10.0F, false, false, false},
                                                       {10.0F, true, true, false}};
  for (const auto& [version, diskpart, busy, shown] : cases) {
    MenuWorkshop w;
    w.session.osVersion = version;
    w.form.busy = busy;
    if (!diskpart) w.files.drop("C:\\Windows\\System32\\diskpart.exe");
    EXPECT_TRUE(w.choose(kMenuVirtualDisk));
    EXPECT_EQ(w.dialogs.shownForms.size(), shown ? 1u : 0u) << version;
    const bool told = w.said(
        "S70\n提示：\n1.System Version < Windows NT 6.1\n"
        "2.Missing system components: [diskpart.exe]");
    EXPECT_EQ(told, !shown && !busy) << version;
  }
}

TEST(SystemMenu, OpensTheHelpPageOfTheLanguage) {
  MenuWorkshop w;
  EXPECT_TRUE(w.choose(kMenuHelp));
  EXPECT_TRUE(w.said("PE environment help is not available.") && w.dialogs.documents.empty());

  w.environment.variables["systemdrive"] = "C:";
  w.environment.thread = 1031;
  w.choose(kMenuHelp);
  w.files.put(std::string(kHome) + "\\Help\\1031.html");
  w.choose(kMenuHelp);
  EXPECT_THAT(w.dialogs.documents, ElementsAre(std::string(kHome) + "\\Help\\1033.html",
                                               std::string(kHome) + "\\Help\\1031.html"));
}

TEST(SystemMenu, WritesTheLanguageFileWhereAsked) {
  MenuWorkshop w;
  w.dialogs.savedFiles = {"", "D:\\mine", "D:\\4100.LNG", "D:\\missing\\1.lng"};
  for (int times = 0; times < 4; ++times) w.choose(kMenuLanguageFile);
  const FileRequest& request = w.dialogs.saveRequests.at(0);
  EXPECT_EQ(request.initialFolder, std::string(kHome) + "\\lang\\");
  EXPECT_EQ(request.filters.at(0).description, "Language Files(*.lng)");
  EXPECT_EQ(request.filters[0].patterns, "*.lng");
  EXPECT_THAT(w.files.below("D:"), ElementsAre("d:\\4100.lng", "d:\\mine.lng"));
  EXPECT_THAT(w.heard(), ElementsAre(HasSubstr("S78 D:\\missing\\1.lng")));
}

}  // namespace pavoline::testing
