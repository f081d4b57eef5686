// Whole installations, from the pressed Start to idle or to the end of the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

using Arrange = std::function<void(Installer&)>;

const std::string kFacts = "M1 My Disk, 200.00GB, NTFS, Disk B";

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
  // What a person cannot do while the window is locked, and more.
  void changeEverything() {
    running().apply = {"--wimboot", true};
    running().commandLine.silent = true;
    form.combo[kEditions].select(0);
    form.combo1.setText("D:\\other.wim");
    form.combo2.setText("");
    for (TextBox& field : form.text) field.setText("D:");
    for (CheckBox& box : form.check) box.setValue(box.ticked() ? 0 : 1);
  }
};

TEST(Installation, RunsItsPlanInOrderWhateverIsChangedMeanwhile) {
  for (const bool changed : {false, true}) {
    Filled w;
    w.wantEverything();
    w.processes.onStart("format.com", [&](ToolRun& run) {
      run.does(500, [&] {
        EXPECT_EQ(w.running().activity, Activity::kInstalling);
        if (changed) w.changeEverything();
      });
      run.does(1000, [&] { w.drives.wipe("E:"); });
    });
    w.processes.onStart("dism.exe", [&](ToolRun& run) {
      run.does(50, [&] {
        EXPECT_EQ(w.files.text("E:\\Windows\\Panther\\unattend.xml"),
                  "\xEF\xBB\xBF"
                  "amd64");
      });
    });
    w.pressStart();
    EXPECT_TRUE(w.runUntil([&] { return !w.running().installation; }));
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
    EXPECT_EQ(w.heard()[0], "S19 E: \r" + kFacts + "\r\rS18|S8|49");
    EXPECT_EQ(w.heard().size(), changed ? 1u : 2u);
    EXPECT_EQ(w.heard().back(), changed ? w.heard()[0] : "S40\nS42|S8|49");
    EXPECT_EQ(w.program->exitCode(), 0);
    EXPECT_TRUE(w.idle() && !w.form.unloaded());
    EXPECT_THAT(w.journal(), HasSubstr("outcome: done"));
  }
}

TEST(Installation, FollowsTheVersionOfTheSystemInTheImage) {
  for (const auto& [version, sector, setupPasses] : {std::tuple{"10.0.19041.1", "/nt60", true},
                                                     {"6.0.6000.1", "/nt60", true},
                                                     {"5.2.3790.1", "/nt52", false},
                                                     {"", "/nt52", false}}) {
    Filled w;
    w.version = version;
    w.wantEverything();
    w.pressStart();
    ASSERT_TRUE(w.runUntil([&] { return !w.running().installation; }));
    EXPECT_TRUE(w.processes.ranLike(std::string("bootsect.exe ") + sector)) << version;
    EXPECT_EQ(w.files.exists("E:\\Windows\\Panther\\unattend.xml"), setupPasses) << version;
    EXPECT_EQ(w.processes.ranLike("dism.exe"), setupPasses) << version;
  }
}

TEST(Installation, WithoutBootToolsIsSaidBeforeAndAfterAndRestartsNothing) {
  Filled w;
  for (const char* folder : {"X:\\Pavoline\\Bin\\Boot", "C:\\Windows\\System32"}) {
    w.files.drop(folder + std::string("\\bcdboot.exe"));
  }
  w.files.drop("X:\\Pavoline\\Bin\\Boot");
  w.pressStart();
  ASSERT_TRUE(w.runUntil([&] { return !w.running().installation; }));
  EXPECT_THAT(w.heard(),
              ElementsAre("S19 E: \r" + kFacts + "\r\rS18\r\rM9|S8|49", "M10\nM11 S:|S8|48"));
  EXPECT_EQ(w.program->exitCode(), 5);
  EXPECT_FALSE(w.processes.ranLike("shutdown"));
}

TEST(Unattended, EndsByItselfWithItsCodeAndAtMostOneMessage) {
  struct Case {
    int code;
    bool begins;
    std::vector<std::string> more;
    const char* without;
    std::vector<std::string> heard;
    Arrange arrange;
  };
  const Arrange none = [](Installer&) {};
  const Arrange damaged = [](Installer& w) {
    w.processes.onStart("info --xml", [](ToolRun& run) { run.exits(18); });
  };
  const Arrange dies = [](Installer& w) {
    w.processes.onStart(" apply ", [](ToolRun& run) { run.exits(72); });
  };
  const Arrange noFormat = [](Installer& w) { w.files.drop("C:\\Windows\\System32\\format.com"); };
  const Arrange noStores = [](Installer& w) {
    w.processes.onStart("bcdboot.exe", [](ToolRun& run) { run.exits(1); });
  };
  const Arrange closes = [](Installer& w) { w.time.after(8000, [&] { w.form.close(); }); };
  for (const Case& c :
       {Case{0, true, {"/reboot"}, "", {}, none},
        Case{1, false, {"/source:D:\\gone.wim"}, "", {"d:\\gone.wim S11|S12|16"}, none},
        Case{1, false, {}, "", {"S13|S12|16"}, damaged},
        Case{2, false, {"/instpart:Q:"}, "", {"M16 D: S:|S12|16"}, none},
        Case{2, false, {"/bootpart:E:\\"}, "/slient", {"M16 E: S:|S12|16"}, none},
        Case{3, true, {}, "", {"S30|S12|16"}, dies},
        Case{4, false, {}, "", {"S32\nS33\nS34\nS35|S22|48"}, noFormat},
        Case{5, true, {"/reboot"}, "", {}, noStores},
        Case{6, false, {}, "/slient", {"S19 E: \r" + kFacts + "\r\rS18|S8|49"}, none},
        Case{6, true, {}, "", {}, closes}}) {
    Installer w;
    w.dialogs.nobodyThere = true;
    c.arrange(w);
    EXPECT_EQ(w.unattended(c.more, c.without), c.code);
    EXPECT_EQ(w.heard(), c.heard) << c.code;
    for (const auto& shown : w.dialogs.messages) {
      EXPECT_EQ(shown.limit.seconds, *c.without == '\0' ? 10 : 60) << c.code;
    }
    EXPECT_EQ(w.installed(), c.begins) << c.code;
    EXPECT_EQ(w.processes.ranLike("shutdown"), c.code == 0);
  }
}

TEST(Unattended, FormatsOnlyWhenToldToAndAsksForTheLossOfARestore) {
  Installer kept;
  kept.files.put("X:\\Pavoline\\Pavoline.ini", "[Option]\r\nNoFormatting=0\r\n");
  EXPECT_EQ(kept.unattended({}, "/formatinstpart"), 0);
  EXPECT_TRUE(kept.files.exists("E:\\old.txt") && !kept.processes.ranLike("format.com"));

  Installer ghost;
  ghost.files.version("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", "12.0.0.10531");
  ghost.files.put("D:\\system.gho");
  ghost.dialogs.answers = {2};
  ghost.dialogs.onMessage = [&](const auto&) {
    EXPECT_FALSE(ghost.form.check[kDoNotFormat].ticked());
  };
  std::vector<std::string> switches = {"/source:D:\\system.gho",
                                       "/instpart:E:", "/bootpart:S:", "/install"};
  ghost.start(switches);
  EXPECT_TRUE(ghost.runUntil([&] { return ghost.form.unloaded(); }));
  EXPECT_THAT(ghost.heard(), ElementsAre(StartsWith("S19 E: ")));
  EXPECT_FALSE(ghost.installed());
}

TEST(Unattended, AutoTakesWhateverTheListsPreselected) {
  Installer w;
  w.files.put("E:\\win10.wim", "wim");
  EXPECT_EQ(w.unattended({"/instpart:AUTO", "/bootpart:auto", "/source:E:\\win10.wim"}), 0);
  EXPECT_TRUE(w.processes.ranLike("format.com D:")) << "the first install row";
}

TEST(LetterlessBoot, GetsALetterForTheInstallation) {
  for (const bool unattended : {true, false}) {
    Installer w;
    w.partitionLines += "2:2\t\t100.00MB\tFAT32\tEFI\tDisk B\tSYSTEM\tGPT\t0\r\n";
    const std::string hidden = w.drives.addLetterless({2, 2});
    if (unattended) {  // although S: would be preselected
      EXPECT_EQ(w.unattended({"/bootpart:AUTO"}), 0);
    } else {
      w.start(), w.fillIn();
      w.form.text[kBootPartition].setText("");
      w.pressStart();
      ASSERT_TRUE(w.runUntil([&] { return !w.running().installation; }));
      EXPECT_EQ(w.heard()[0], "M8 E: V:|M0|49");
      EXPECT_EQ(w.form.text[kBootPartition].text(), "");
    }
    EXPECT_TRUE(w.processes.ranLike("E:\\Windows /s V: /f uefi"));
    EXPECT_THAT(w.drives.letterCalls, ElementsAre("assign V: 2 2", "remove V:"));
    EXPECT_TRUE(w.files.exists(hidden + "\\boot\\bcd"));
  }
}

TEST(Installation, OneStartAtATimeWhileAQuestionIsOpen) {
  Filled shop;
  shop.dialogs.onMessage = [&](const auto&) {
    if (shop.dialogs.messages.size() < 5) shop.pressStart();
  };
  shop.pressStart();
  EXPECT_EQ(shop.count("S19"), 1);

  Installer unattended;
  unattended.dialogs.messageMs = 10000;  // the auto-start timer goes on meanwhile
  unattended.unattended({}, "/slient");
  EXPECT_EQ(unattended.count("S19"), 1);
}

TEST(Installation, WhatIsCheckedCannotBeChangedMeanwhileAndCancelChangesNothing) {
  Filled shop;
  shop.form.check[kDoNotFormat].setValue(1);
  bool looked = false;
  shop.processes.onStart("CxDir.exe", [&](ToolRun& run) {
    run.print(500, shop.partitionLines);
    run.does(100, [&] {
      looked = true;
      const Form1& form = shop.form;
      EXPECT_FALSE(form.combo1.enabled() || form.combo[kEditions].enabled());
      EXPECT_FALSE(form.text[kInstallPartition].enabled() || form.check[kDoNotFormat].enabled());
      EXPECT_FALSE(form.command1[kStart].enabled());
    });
  });
  shop.dialogs.answers = {2};
  shop.pressStart();
  EXPECT_EQ(shop.heard().back(), "S17 E: \r" + kFacts + "\r\rS18|S8|49");
  EXPECT_FALSE(shop.installed());
  EXPECT_EQ(shop.program->exitCode(), 6);
  EXPECT_TRUE(looked && shop.idle() && shop.form.command1[kStart].enabled());
}

TEST(Closing, AsksDuringAnInstallationAndEndsTheToolsInOrder) {
  Filled shop;
  shop.pressStart();
  shop.run(8000);
  shop.running().mountedIsoDrive = "F:";
  for (const char* tool : {"DISM.EXE", "Ghost.exe"}) shop.processes.alreadyRunning(tool);

  shop.dialogs.answers = {2};
  EXPECT_FALSE(shop.form.close());
  EXPECT_TRUE(shop.running().installation && shop.processes.killed.empty());
  EXPECT_EQ(shop.dialogs.messages.back().flags, 17);

  EXPECT_TRUE(shop.form.close());
  EXPECT_THAT(shop.processes.killed, ElementsAre("wimlib-imagex.exe", "Ghost.exe", "DISM.EXE"));
  EXPECT_TRUE(shop.processes.ranLike("imdisk.exe -D -m F:"));
  shop.run(60000);
  EXPECT_FALSE(shop.processes.ranLike("bcdboot")) << "nothing goes on after the end";
}

TEST(Closing, EndsAnInstallationInEveryStepAtOnce) {
  for (const std::string during :
       {"CxDir", "format.com", "takeown", "the copy", "cacls", " apply ", "bcdboot", "fix.exe"}) {
    InstallShop w;
    w.plan.apply.wimcopy = true;
    w.plan.plugin = "D:\\fix.exe";
    w.plan.restart = true;
    w.files.put("D:\\fix.exe");
    w.closeDuring(during);
    // Lister and format have ended by then, the copy has begun.
    if (during == "the copy") w.time.after(1006, [&] { w.form.unload(); });
    EXPECT_EQ(w.install(), 6) << during;
    w.run(60000);
    EXPECT_THAT(w.processes.ran.back(), HasSubstr(during == "the copy" ? "takeown" : during));
    EXPECT_TRUE(w.dialogs.messages.empty()) << during;
  }
}

}  // namespace pavoline::testing
