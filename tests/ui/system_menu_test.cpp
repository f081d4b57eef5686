#include "ui/system_menu.h"

#include <gmock/gmock.h>

#include <set>

#include "engine/wim_apply.h"
#include "support/workshop.h"
#include "ui/apply_mode.h"
#include "ui/companion_tools.h"

namespace pavoline::testing {
namespace {

using ::testing::ElementsAre;

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
  const std::vector<MenuItem>& tools() const { return form.systemMenu().at(3).items; }
  const std::vector<MenuItem>& modes() const { return form.systemMenu().at(4).items; }
  std::vector<int> checkedModes() const {
    std::vector<int> result;
    for (const MenuItem& item : modes()) {
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
  EXPECT_THAT(w.texts(w.modes()),
              ElementsAre("2020 Normal mode ", "2021 Wimboot", "2022 Wimboot:WIMCOPY",
                          "2023 Compact:XPRESS4K", "2024 Compact:XPRESS8K",
                          "2025 Compact:XPRESS16K", "2026 Compact:LZX"));
  EXPECT_THAT(w.checkedModes(), ElementsAre(2020));
}

TEST(SystemMenu, ListsTheToolsThatAreThere) {
  MenuWorkshop w;
  EXPECT_THAT(w.texts(w.tools()), ElementsAre("2011 S63(&R)"));

  w.files.put("X:\\Programs\\Brantor\\Brantor.exe");
  w.files.put(std::string(kHome) + "\\Quillet.exe");
  w.files.put("X:\\Programs\\DiskGenius\\DiskGenius.exe");
  w.files.put(std::string(kHome) + "\\Bin\\Ghost\\x64\\ghost.exe");
  BuildSystemMenu(w.session);
  EXPECT_THAT(w.texts(w.tools()), ElementsAre("2010 Brantor\tCtrl+B", "2011 Quillet\tCtrl+R",
                                              "2013 DiskGenius\tCtrl+D", "2012 Ghost\tCtrl+G"));

  w.environment.thread = 2052;
  BuildSystemMenu(w.session);
  EXPECT_THAT(w.texts(w.tools()), ElementsAre("2010 系统备份 \tCtrl+B", "2011 引导修复 \tCtrl+R",
                                              "2013 硬盘分区 \tCtrl+D", "2012 手动运行 \tCtrl+G"));
}

TEST(CompanionTools, AreTakenFromBesideTheProgramFirst) {
  MenuWorkshop w;
  const struct {
    int command;
    char key;
    std::string beside, inside;
    bool closes;
  } cases[] = {
      {kMenuBackup, 'B', "X:\\Programs\\Brantor\\Brantor.exe", "\\Brantor.exe", true},
      {kMenuBootRepair, 'R', "X:\\Programs\\Quillet\\Quillet.exe", "\\Quillet.exe", true},
      {kMenuPartitions, 'D', "X:\\Programs\\DiskGenius\\DiskGenius.exe", "", false},
      {kMenuGhost, 'G', "", "\\Bin\\Ghost\\x64\\ghost.exe", true},
  };
  for (const auto& c : cases) {
    const CompanionTool* tool = ToolOfCommand(c.command);
    ASSERT_NE(tool, nullptr);
    EXPECT_EQ(ToolOfKey(c.key), tool);
    EXPECT_EQ(tool->closesProgram, c.closes);
    EXPECT_EQ(FindTool(w.session, *tool), "");
    EXPECT_FALSE(StartTool(w.session, *tool));
    for (const std::string& path : {c.inside.empty() ? "" : kHome + c.inside, c.beside}) {
      if (path.empty()) continue;
      w.files.put(path);
      EXPECT_EQ(FindTool(w.session, *tool), path);
    }
    w.processes.started.clear();
    EXPECT_TRUE(w.choose(c.command));
    ASSERT_EQ(w.processes.started.size(), 1u) << c.key;
    EXPECT_EQ(w.processes.started[0].mode, ShowMode::kNormal);
    EXPECT_FALSE(w.form.unloaded());  // only its key lets a tool take the program's place
  }
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
  const struct {
    int id;
    std::string options, suffix;
  } cases[] = {
      {2021, "--wimboot", " - Wimboot"},
      {2022, "--wimboot", " - Wimboot:WIMCOPY"},
      {2023, "--compact=xpress4k", " - Compact:XPRESS4K"},
      {2024, "--compact=xpress8k", " - Compact:XPRESS8K"},
      {2025, "--compact=xpress16k", " - Compact:XPRESS16K"},
      {2026, "--compact=lzx", " - Compact:LZX"},
      {2020, "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(w.choose(c.id));
    EXPECT_EQ(w.session.applyOptions, c.options);
    EXPECT_EQ(w.session.wimcopy, c.id == 2022);
    EXPECT_EQ(w.form.caption(), "Sub - Pavoline" + c.suffix);
    EXPECT_THAT(w.checkedModes(), ElementsAre(c.id));
  }
}

TEST(ApplyModes, ReachTheApplyLine) {
  for (const ApplyMode& mode : ApplyModes()) {
    MenuWorkshop w;
    w.files.put("D:\\install.esd");  // applied from where it lies in every mode
    w.form.combo1.setText("D:\\install.esd");
    w.form.combo[kEditions].addItem("Only");
    w.form.combo[kEditions].select(0);
    w.form.text[kInstallPartition].setText("E:");
    w.form.check[kDoNotFormat].setValue(1);
    w.choose(mode.commandId);
    WimSetup(w.session);
    ASSERT_EQ(w.processes.started.size(), 1u);
    EXPECT_THAT(w.processes.started[0].script,
                ::testing::HasSubstr(" 1 E:\\ " + std::string(mode.applyOptions) + " >C:"));
  }
}

TEST(SystemMenu, SavesTheSettings) {
  MenuWorkshop w;
  w.session.options.computerName = "OFFICE-7";
  EXPECT_TRUE(w.choose(kMenuSaveSettings));
  EXPECT_THAT(w.files.text(w.session.paths.settingsPath),
              ::testing::HasSubstr("ComputerName=OFFICE-7"));
  ASSERT_EQ(w.dialogs.messages.size(), 1u);
  EXPECT_EQ(w.dialogs.messages[0].text, "S67");
  EXPECT_EQ(w.dialogs.messages[0].title, "S8");
}

TEST(SystemMenu, OpensVirtualDisksOnlyWhereTheSystemHasThem) {
  const struct {
    float version;
    bool diskpart, busy;
    bool shown;
  } cases[] = {{6.1F, true, false, true},
               {6.0F, true, false, false},
               {0.0F, true, false, false},
               {10.0F, false, false, false},
               {10.0F, true, true, false}};
  for (const auto& c : cases) {
    MenuWorkshop w;
    w.session.osVersion = c.version;
    w.form.busy = c.busy;
    if (!c.diskpart) w.files.drop("C:\\Windows\\System32\\diskpart.exe");
    EXPECT_TRUE(w.choose(kMenuVirtualDisk));
    EXPECT_EQ(w.dialogs.shownForms.size(), c.shown ? 1u : 0u) << c.version;
    const bool told = w.said(
        "S70\n提示：\n1.System Version < Windows NT 6.1\n"
        "2.Missing system components: [diskpart.exe]");
    EXPECT_EQ(told, !c.shown && !c.busy) << c.version;
  }
}

TEST(SystemMenu, OpensTheHelpPageOfTheLanguage) {
  MenuWorkshop w;
  EXPECT_TRUE(w.choose(kMenuHelp));
  EXPECT_TRUE(w.said("PE environment help is not available."));
  EXPECT_TRUE(w.dialogs.documents.empty());

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
  EXPECT_TRUE(w.choose(kMenuLanguageFile));  // cancelled
  ASSERT_EQ(w.dialogs.saveRequests.size(), 1u);
  const FileRequest& request = w.dialogs.saveRequests[0];
  EXPECT_EQ(request.initialFolder, std::string(kHome) + "\\lang\\");
  ASSERT_EQ(request.filters.size(), 1u);
  EXPECT_EQ(request.filters[0].description, "Language Files(*.lng)");
  EXPECT_EQ(request.filters[0].patterns, "*.lng");
  EXPECT_TRUE(w.dialogs.messages.empty());

  w.dialogs.savedFiles = {"D:\\mine", "D:\\4100.LNG", "D:\\missing\\1.lng"};
  w.choose(kMenuLanguageFile);
  w.choose(kMenuLanguageFile);
  EXPECT_TRUE(w.files.exists("D:\\mine.lng"));
  EXPECT_TRUE(w.files.exists("D:\\4100.LNG"));
  EXPECT_FALSE(w.files.exists("D:\\4100.LNG.lng"));
  EXPECT_TRUE(w.dialogs.messages.empty());
  w.choose(kMenuLanguageFile);
  EXPECT_TRUE(w.said("S78 D:\\missing\\1.lng"));
  EXPECT_EQ(w.files.below("D:").size(), 2u);
}

}  // namespace
}  // namespace pavoline::testing
