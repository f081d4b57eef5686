// Whole installations, from the pressed Start to idle or to the end of the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/closing.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

const std::string kFacts = "VolumeFacts My Disk 200.00GB NTFS Disk B";
const std::string kQuestion = "ConfirmFormat E: \r" + kFacts + "\r\rConfirmTail";

// Started and filled in, so that only Start is to be pressed.
struct Filled : Installer {
  Filled() { start(), fillIn(); }

  void wantEverything() {
    files.put("D:\\answer.xml", "\xEF\xBB\xBF%Pavoline-Arch%");
    files.put("D:\\fix.exe");
    files.folder("D:\\DRIVERS");
    form.text[kBootPartition].setText("S:\\");
    form.text[kAnswerFile].setText("D:\\answer.xml");
    form.text[kDriverFolder].setText("D:\\DRIVERS");
    form.combo2.setText("D:\\fix.exe %ip% %bp%");
    for (CheckBox& box : form.check) box.setValue(1);
    form.check[kDoNotFormat].setValue(0);
    processes.ran.clear();
  }
  // More than a person could do while the window is locked.
  void changeEverything() {
    running().apply = {"--wimboot", true};
    form.combo[kEditions].select(0);
    form.combo1.setText("D:\\other.wim");
    form.combo2.setText("");
    for (TextBox& field : form.text) field.setText("D:");
    for (CheckBox& box : form.check) box.setValue(box.ticked() ? 0 : 1);
  }
  int finish() {
    pressStart();
    EXPECT_TRUE(runUntil([&] { return !running().installation; }));
    return program->exitCode();
  }
};

TEST(Installation, RunsItsPlanInOrderWhateverIsChangedMeanwhile) {
  for (const bool changed : {false, true}) {
    Filled w;
    w.wantEverything();
    w.processes.onStart("format.com", [&](ToolRun& run) {
      run.does(500, [&] {
        if (changed) w.changeEverything();
      });
      run.does(1000, [&] { w.drives.wipe("E:"); });
    });
    w.processes.onStart("dism.exe", [&](ToolRun&) {
      EXPECT_EQ(w.files.text("E:\\Windows\\Panther\\unattend.xml"),
                "\xEF\xBB\xBF" + std::string("amd64"));
    });
    EXPECT_EQ(w.finish(), 0);
    EXPECT_THAT(
        w.commands(),
        ElementsAre("C:\\Windows\\System32\\format.com E: /FS:NTFS /v:MyDisk /q /x /y",
                    "\"X:\\Pavoline\"\\Bin\\wimlib-imagex\\x64\\wimlib-imagex.exe apply "
                    "\"D:\\SOURCES\\INSTALL.WIM\" 2 E:\\  >C:\\Windows\\temp\\apply.xml",
                    "bcdboot.exe E:\\Windows /s S: /f bios /l de-DE",
                    "bcdboot.exe E:\\Windows /s S: /f uefi /l de-DE", "bootsect.exe /nt60 S: /mbr",
                    "dism.exe /image:E:\\ /Add-Driver /Driver:D:\\DRIVERS /recurse /forceunsigned "
                    ">C:\\Windows\\temp\\SetDrv.xml",
                    "D:\\fix.exe E: S:", "shutdown.exe -r -f -t 5"));
    EXPECT_THAT(w.heard(),
                ElementsAre(kQuestion + "|Information|49", "Finished\nRestarting|Information|49"));
    EXPECT_TRUE(w.idle() && !w.form.unloaded());
  }
}

TEST(Installation, FollowsTheVersionOfTheSystemInTheImage) {
  for (const auto& [version, setupPasses] :
       {std::pair{"6.0.6000.1", true}, {"5.2.3790.1", false}, {"", false}}) {
    Filled w;
    w.version = version;
    w.wantEverything();
    EXPECT_EQ(w.finish(), 0);
    EXPECT_EQ(w.processes.ranLike("bootsect.exe /nt60"), setupPasses) << version;
    EXPECT_EQ(w.files.exists("E:\\Windows\\Panther\\unattend.xml"), setupPasses) << version;
    EXPECT_EQ(w.processes.ranLike("dism.exe"), setupPasses) << version;
  }
}

TEST(Installation, WithoutBootToolsIsSaidBeforeAndAfterAndRestartsNothing) {
  Filled w;
  w.files.drop("X:\\Pavoline\\Bin\\Boot");
  w.files.drop("C:\\Windows\\System32\\bcdboot.exe");
  EXPECT_EQ(w.finish(), 5);
  EXPECT_THAT(w.heard(), ElementsAre(kQuestion + "\r\rNoBootTools|Information|49",
                                     "Incomplete\nNoBootFiles S:|Information|48"));
  EXPECT_FALSE(w.processes.ranLike("shutdown"));
  EXPECT_EQ(w.form.progressBar1.value(), 100);
}

TEST(Unattended, EndsByItselfWithItsCodeAndAtMostOneMessage) {
  struct Case {
    int code;
    bool lost;  // what was on the partition
    std::vector<std::string> more;
    const char* without;
    std::vector<std::string> heard;
    std::function<void(Installer&)> arrange;
  };
  const auto tool = [](const char* part, std::uint32_t code) {
    return [=](Installer& w) { w.processes.onStart(part, [=](ToolRun& run) { run.exits(code); }); };
  };
  const auto none = [](Installer&) {};
  const auto settings = [](Installer& w) {
    w.files.put("X:\\Pavoline\\Pavoline.ini", "[Option]\r\nNoFormatting=0\r\n");
  };
  const auto ghost = [](Installer& w) {
    w.files.version("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", "12.0.0.10531");
    w.files.put("D:\\a.gho");
    w.processes.onStart("ghost.exe", [&w](ToolRun& run) {
      run.endsAt(3000);
      w.processes.onStart("CxDir.exe", [](ToolRun&) { ADD_FAILURE() << "started up anew"; });
    });
    w.dialogs.onMessage = [&](const auto&) { EXPECT_FALSE(w.form.check[kDoNotFormat].ticked()); };
  };
  const auto noFormat = [](Installer& w) { w.files.drop("C:\\Windows\\System32\\format.com"); };
  const auto closes = [](Installer& w) { w.time.after(8000, [&] { w.form.close(); }); };
  const auto stops = [](Installer& w) { w.time.after(8000, [&] { w.form.stop.press(); }); };
  const std::string asked = kQuestion + "|Information|49";
  for (const Case& c :
       {Case{0, true, {"/reboot"}, "", {}, none},
        Case{0, false, {"/reboot"}, "/formatinstpart", {}, settings},
        Case{1, false, {"/source:D:\\gone.wim"}, "", {"d:\\gone.wim SourceMissing|Error|16"}, none},
        Case{1, false, {}, "", {"NoEdition|Error|16"}, tool("info --xml", 18)},
        Case{1, false, {"/answer:D:\\Gone.xml"}, "", {"NamedMissing D:\\Gone.xml|Error|16"}, none},
        Case{1, false, {"/drivers:D:\\%mac%"}, "", {"Untold %mac% D:\\%mac%|Error|16"}, none},
        Case{2, false, {"/instpart:Q:"}, "", {"OtherPartitions E: S:|Error|16"}, none},
        Case{2, false, {"/bootpart:E:\\"}, "/slient", {"OtherPartitions E: S:|Error|16"}, none},
        Case{3, true, {}, "", {"ApplyFailed|Error|16"}, tool(" apply ", 72)},
        Case{3, false, {"/source:D:\\a.gho"}, "", {"ApplyFailed|Error|16"}, ghost},
        Case{4,
             false,
             {},
             "",
             {"FormatMissing\nFormatMissingFile\nFormatMissingStart\nFormatMissingKeep|CloseTitle|"
              "48"},
             noFormat},
        Case{5, true, {"/reboot"}, "", {}, tool("bcdboot.exe", 1)},
        Case{6, false, {}, "/slient", {asked}, none},
        Case{6, false, {"/source:D:\\a.gho"}, "/slient /formatinstpart", {asked}, ghost},
        Case{6, true, {}, "", {}, closes}, Case{6, true, {}, "", {}, stops}}) {
    Installer w;
    w.dialogs.nobodyThere = true;
    c.arrange(w);
    EXPECT_EQ(w.unattended(c.more, c.without), c.code);
    EXPECT_EQ(w.heard(), c.heard) << c.code;
    for (const auto& shown : w.dialogs.messages) {
      EXPECT_EQ(shown.limit.seconds, *c.without == '\0' ? 10 : 60) << c.code;
    }
    EXPECT_EQ(w.files.exists("E:\\old.txt"), !c.lost) << c.code;
    EXPECT_EQ(w.processes.ranLike("shutdown"), c.code == 0);
  }
}

TEST(Closing, AsksDuringAnInstallationAndEndsTheToolsInOrderAsStopDoes) {
  for (const bool stop : {false, true}) {
    Filled w;
    const auto leave = [&] { stop ? w.form.stop.press() : static_cast<void>(w.form.close()); };
    w.pressStart();
    w.run(8000);
    EXPECT_THAT(w.form.overall.text(), StartsWith("Phase 2 3 · Percent 12 · Gone 0:09"));
    w.running().mountedIsoDrive = "F:";
    w.running().outerIsos = {{"G:", "D:\\two.iso"}};
    for (const char* tool : {"DISM.EXE", "Ghost.exe"}) w.processes.alreadyRunning(tool);
    w.dialogs.answers = {kAnswerCancel};
    leave();
    EXPECT_TRUE(w.running().installation && w.processes.killed.empty());
    EXPECT_EQ(w.heard().back(),
              stop ? "StopQuestion|CloseTitle|17" : "CloseQuestion|CloseTitle|17");

    leave();
    EXPECT_THAT(w.processes.killed, ElementsAre("wimlib-imagex.exe", "Ghost.exe", "DISM.EXE"));
    for (const char* drive : {"F:", "G:"}) {
      EXPECT_EQ(w.processes.ranLike("imdisk.exe -D -m " + std::string(drive)), !stop);
    }
    EXPECT_EQ(
        w.files.text("C:\\Windows\\temp\\Pavoline.log").find(" stopped\r\n") != std::string::npos,
        stop);
    EXPECT_EQ(w.form.unloaded(), !stop);
    EXPECT_EQ(w.program->exitCode(), 6);
    EXPECT_TRUE(w.form.overall.text().empty() && !w.form.stop.visible());
    EXPECT_TRUE(!w.form.overallTimer.enabled() && w.form.combo1.enabled() == stop);
    for (const Timer* timer : w.form.timers()) EXPECT_FALSE(timer->enabled() && !stop);
    EXPECT_TRUE(!stop || (w.idle() && w.finish() == 0)) << "it can be started anew";
  }
}

TEST(Closing, DuringTheChecksOrTheirQuestionsBeginsNothing) {
  for (const char* during : {"CxDir.exe", "ConfirmFormat", "LendLetter"}) {
    Filled w;
    if (during == std::string("LendLetter")) {  // a boot partition without a letter
      w.running().partitions = {{"2:1\tE:\t200.00GB\tNTFS\tPrimary\tDisk B\tMy Disk\tGPT\t0"},
                                {"2:2\t\t100.00MB\tFAT32\tEFI\tDisk B\tSYSTEM\tGPT\t0"}};
      w.form.text[kBootPartition].setText("");
    }
    w.processes.onStart("CxDir.exe", [&](ToolRun& run) {
      run.print(5, w.partitionLines);
      if (run.line.find(during) != std::string::npos) run.does(1, [&] { w.form.unload(); });
    });
    w.dialogs.onMessage = [&](const auto&) { w.form.unload(); };
    w.pressStart();
    w.run(60'000);
    EXPECT_EQ(w.count(during), w.dialogs.messages.size()) << during;
    EXPECT_TRUE(w.form.unloaded() && !w.running().installation);
    EXPECT_TRUE(w.commands().size() == 1 && w.drives.letterCalls.empty()) << "only the source's";
    EXPECT_THAT(w.files.text("C:\\Windows\\temp\\Pavoline.log"), Not(HasSubstr("outcome:")));
  }
}

TEST(LentLetter, IsTakenBackAtEveryEndAndBeforeTheRestart) {
  for (const char* end : {"done", "failed", "closed"}) {
    InstallShop w;
    w.session.lentLetter = "V:";
    w.plan.restart = true;
    w.processes.onStart("shutdown.exe", [&](ToolRun&) { EXPECT_EQ(w.session.lentLetter, ""); });
    if (end == std::string("failed")) w.files.drop("C:\\Windows\\System32\\format.com");
    end == std::string("closed") ? static_cast<void>(w.form.close())
                                 : static_cast<void>(w.install());
    EXPECT_THAT(w.drives.letterCalls, ElementsAre("remove V:")) << end;
  }
}

TEST(Closing, LeavesAnEndAloneThatCameWhileItWasAskedAsStopDoes) {
  for (const bool stop : {false, true}) {
    Filled w;
    w.pressStart();
    w.run(8000);
    w.processes.alreadyRunning("DISM.EXE");  // of somebody else by then
    w.dialogs.messageMs = 60'000;
    stop ? w.form.stop.press() : static_cast<void>(w.form.close());
    EXPECT_EQ(w.program->exitCode(), 0);
    EXPECT_TRUE(w.processes.killed.empty() && w.form.unloaded() == !stop && w.idle() == stop);
  }
}

TEST(Closing, EndsAnInstallationInEveryStepAtOnceAsStopDoes) {
  constexpr const char* kSteps[] = {"CxDir",   "format.com", "takeown", "the copy", "cacls",
                                    " apply ", "bcdboot",    "dism",    "fix.exe"};
  for (int i = 0; i < 2 * static_cast<int>(std::size(kSteps)); ++i) {
    const std::string during = kSteps[i / 2];
    const bool stop = i % 2 == 1;
    InstallShop w;
    const auto leave = [&] { stop ? StopRequested(w.session) : w.form.unload(); };
    w.plan.driverFolder = "D:\\DRIVERS";
    w.files.folder("D:\\DRIVERS");
    w.plan.apply.wimcopy = true;
    w.plan.plugin = "D:\\fix.exe";
    w.plan.restart = true;
    w.files.put("D:\\fix.exe");
    w.processes.onStart(during, [&](ToolRun& run) {
      run.does(100, leave);
      run.endsAt(5000);
    });
    // Lister and format have ended by then, the copy has begun.
    if (during == "the copy") w.time.after(1006, leave);
    EXPECT_EQ(w.install(), 6) << during;
    w.run(60000);
    EXPECT_THAT(w.processes.ran.back(), HasSubstr(during == "the copy" ? "takeown" : during));
    EXPECT_EQ(w.dialogs.messages.size(), stop ? 1u : 0u) << during;
    EXPECT_THAT(w.files.text("C:\\Windows\\temp\\Pavoline.log"), Not(HasSubstr("confirmed one")));
    EXPECT_EQ(w.session.activity, stop ? Activity::kIdle : Activity::kClosed) << during;
  }
}

}  // namespace pavoline::testing
