// What is told of an installation that nobody begins: the very lines that it would run.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "disk/partitions.h"
#include "install/rehearsal.h"
#include "platform/text.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

// All that a dry run must leave as it is.
std::string State(InstallShop& w) {
  std::string state = std::to_string(w.processes.started.size() + w.drives.letterCalls.size() +
                                     w.dialogs.messages.size()) +
                      w.form.status.text();
  for (const char* drive : {"C:", "D:", "E:", "S:", "X:"}) {
    for (const std::string& path : w.files.below(drive)) state += path + w.files.text(path);
  }
  return state;
}

int Install(InstallShop& w) {
  w.begin();
  if (w.plan.kind == ImageKind::kGho) {
    const std::uint32_t ghost = w.session.installation->ghost.tool->id();
    const ForeignWindow window = w.windows.open("GhostScreen", "Ghost - 99%", ghost);
    w.run(3000);
    w.windows.at(window).open = false;
    w.processes.terminate(ghost);
  }
  EXPECT_TRUE(w.runUntil([&] { return w.session.installation == nullptr; }));
  return static_cast<int>(w.session.exitCode);
}

using Arrange = std::function<void(InstallShop&)>;

Arrange Image(const std::string& path, double ghostBuild = 0) {
  return [=](InstallShop& w) {
    w.files.put(w.plan.source = path);
    w.plan.kind = KindOf(path);
    w.files.put(w.plan.ghostProgram = "X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe");
    w.plan.ghostBuild = ghostBuild;
    if (ghostBuild > 0) w.applied();
    w.processes.onStart("ghost.exe", [](ToolRun& run) { run.neverEnds(); });
  };
}
Arrange Mode(const std::string& options, bool wimcopy = false) {
  return [=](InstallShop& w) {
    w.plan.apply = {options, wimcopy};
    w.files.shortNames = false;  // those of files to come are not known beforehand
  };
}
Arrange Gone(const std::string& path) {
  return [=](InstallShop& w) { w.files.drop(path); };
}
Arrange Step(std::string Plan::*wanted, const std::string& text, const std::string& file) {
  return [=](InstallShop& w) {
    w.plan.*wanted = text;
    w.session.plugins.add("Fix", "\"D:\\fix.exe\" /q %ip% %bp%");
    if (!file.empty()) w.files.put(file, "\xEF\xBB\xBF<unattend/>");
  };
}

TEST(Rehearsal, TellsWhatAnInstallationRunsAndChangesNothing) {
  const std::string kSystem = "C:\\Windows\\System32\\";
  const std::pair<const char*, Arrange> cases[] = {
      {"WIM", Arrange()},
      {"ESD", Image("D:\\a & b 100% \u4E0A.esd")},
      {"inside an ISO", Image("F:\\sources\\install.wim")},
      {"Ghost by letter", Image("D:\\a.gho", 10531)},
      {"Ghost by address", Image("D:\\a.gho", 10532)},
      {"kept", [](InstallShop& w) { w.plan.format = false; }},
      {"wimboot", Mode("--wimboot")},
      {"copied", Mode("--wimboot", true)},
      {"compact", Mode("--compact=lzx")},
      {"repair",
       [](InstallShop& w) {
         w.plan.repairBoot = true;
         w.files.folder("D:\\Windows");
         w.files.put("S:\\boot\\bcd", "old");
       }},
      {"drivers", Step(&Plan::driverFolder, "D:\\my drivers", "D:\\my drivers\\a.inf")},
      {"drivers gone", Step(&Plan::driverFolder, "D:\\none", "")},
      {"answer file", Step(&Plan::answerFile, "D:\\a.xml", "D:\\a.xml")},
      {"plug-in", Step(&Plan::plugin, "D:\\fix.exe %ip%", "D:\\fix.exe")},
      {"named plug-in", Step(&Plan::plugin, "Fix", "D:\\fix.exe")},
      {"restart", [](InstallShop& w) { w.plan.restart = true; }},
      {"without bcdboot",
       [=](InstallShop& w) {
         w.plan.restart = true;
         for (const std::string& folder : {w.kBootTools, kSystem}) {
           w.files.drop(folder + "bcdboot.exe");
         }
       }},
      {"without format", Gone(kSystem + "format.com")}};
  for (const auto& [name, arrange] : cases) {
    InstallShop w;
    if (arrange) arrange(w);
    GetPart(w.session);
    w.files.remove("C:\\Windows\\temp\\Pavoline.log");
    w.processes.ran.clear();
    const std::string before = State(w);
    const Rehearsal rehearsal = Rehearse(w.session, w.plan);
    EXPECT_EQ(State(w), before) << name;

    EXPECT_EQ(static_cast<int>(rehearsal.outcome.failure.code), Install(w)) << name;
    std::vector<std::string> told;
    for (const PlannedStep& step : rehearsal.steps) {
      for (const PlannedAct& act : step.acts) {
        const std::string made = act.text.substr(act.text.find("-> ") + 3);
        if (act.command) told.push_back(ReplaceAll(act.text, "%%", "%"));
        EXPECT_TRUE(act.command || made.ends_with(".before") || w.files.exists(made)) << made;
      }
    }
    EXPECT_EQ(told, w.processes.ran) << name;
  }
}

TEST(DryRun, TellsChecksPlanAndLinesAndEndsWithTheCodeOfAnInstallation) {
  const auto none = [](Installer&) {};
  const auto noFormat = [](Installer& w) { w.files.drop("C:\\Windows\\System32\\format.com"); };
  const auto noTools = [](Installer& w) {
    for (const std::string& folder : {w.kBootTools, std::string("C:\\Windows\\System32\\")}) {
      w.files.drop(folder + "bcdboot.exe");
    }
  };
  const auto letterless = [](Installer& w) {
    w.partitionLines = ReplaceAll(ReplaceAll(w.partitionLines, "\tS:", "\t"), "1:3", "2:3");
  };
  const std::tuple<int, std::string, std::string, std::function<void(Installer&)>> cases[] = {
      {0, "/reboot", "    shutdown.exe -r -f -t 5\r\n", none},
      {0, "/lng:1033", "\r\nFinished\r\n    C:\\Windows\\temp\\Pavoline.log -> E:", none},
      {0, "/bootpart:AUTO", "\\Windows /s V: /f uefi", letterless},
      {1, "/source:D:\\gone.wim",
       "Passed\r\n- NotRunningSystem\r\nd:\\gone.wim SourceMissing\r\noutcome", none},
      {2, "/instpart:Q:", "OtherPartitions E: S:\r\noutcome", none},
      {4, "/reboot", "WouldEnd\r\nFormatMissing\r\nFormatMissingFile\r\n", noFormat},
      {5, "/reboot", "Incomplete\r\nNoBootFiles S:\r\n", noTools}};
  for (const auto& [code, more, part, arrange] : cases) {
    Installer w;
    arrange(w);
    w.dialogs.nobodyThere = true;
    EXPECT_EQ(w.unattended({"/dryrun", more}), code);
    EXPECT_THAT(w.environment.printed, HasSubstr(part));
    EXPECT_THAT(w.environment.printed, HasSubstr("exit code " + std::to_string(code)));
    EXPECT_THAT(w.files.text("C:\\Windows\\temp\\Pavoline.log"),
                AllOf(HasSubstr("outcome of the dry run: "), Not(HasSubstr("  step: "))));
    EXPECT_TRUE(w.files.exists("E:\\old.txt") && w.drives.letterCalls.empty());
    for (const std::string& line : w.commands()) EXPECT_THAT(line, HasSubstr("info --xml"));
    EXPECT_EQ(w.dialogs.messages.size(), code == 0 || code == 5 ? 0u : 1u) << code;
  }
}

TEST(Details, ShowTheSameTextAndLeaveTheQuestionOpen) {
  Installer w, dry;
  std::vector<std::string> shown;
  const auto look = [&](Form& window) { shown.push_back(window.controls()[0]->text()); };
  const auto begin = [](Installer& shop, std::vector<std::string> switches) {
    shop.start(std::move(switches)), shop.fillIn();
    shop.files.put("D:\\fix.exe");
    shop.form.check[kRunPlugin].setValue(1);
    shop.form.combo2.setText("D:\\fix.exe /password:x1");
  };
  begin(w, {});
  w.dialogs.modals = {look, look};
  w.dialogs.onMessage = [](const FakeDialogs::Shown& question) {
    EXPECT_EQ(question.further.text, "DetailsButton");
    for (int times = 0; times < 2; ++times) question.further.press();
  };
  w.dialogs.answers = {kAnswerCancel};
  w.pressStart();
  EXPECT_TRUE(w.idle() && !w.processes.ranLike("format"));

  begin(dry, {"/dryrun"});
  dry.dialogs.modals = {look};
  dry.pressStart();
  ASSERT_EQ(shown.size(), 3u);
  EXPECT_EQ(shown[0], shown[1]);
  EXPECT_EQ("DryRun\r\n\r\n" + shown[0], shown[2]);
  EXPECT_EQ(Split(shown[0], "D:\\fix.exe ...").size(), 3u);
  EXPECT_THAT(dry.environment.printed + dry.files.text("C:\\Windows\\temp\\Pavoline.log"),
              Not(HasSubstr("x1")));
  EXPECT_TRUE(dry.heard().empty() && dry.idle() && !dry.processes.ranLike("format"));
}

}  // namespace pavoline::testing
