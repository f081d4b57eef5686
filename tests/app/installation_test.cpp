// Whole installations, from the first key to idle or to the end of the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer.h"
#include "platform/text.h"

namespace pavoline {
namespace {

using ::testing::HasSubstr;
using testing::Installer;
using ::testing::Not;

const std::vector<std::string> kUnattended = {"/source:D:\\images\\win10.wim",
                                              "/wimindex:2",
                                              "/instpart:E:",
                                              "/bootpart:S:",
                                              "/formatinstpart",
                                              "/install",
                                              "/slient"};

TEST(Installation, AttendedRunsEveryStepInOrderAndReturnsToIdle) {
  Installer shop;
  shop.start();
  shop.fillIn();
  EXPECT_EQ(shop.form.combo[kEditions].text(), "Pro  64-Bit");
  shop.pressStart();
  ASSERT_TRUE(shop.form.busy);
  EXPECT_THAT(shop.dialogs.messages.back().text, HasSubstr("S19 E: \r\rS18"));
  EXPECT_FALSE(shop.files.exists("E:\\old.txt")) << "formatted";
  ASSERT_TRUE(shop.runUntil([&] { return shop.idle(); }));

  const auto& ran = shop.processes.ran;
  std::size_t at = 0;
  for (const char* step : {"format.com E: /FS:NTFS /v:MyDisk /q /x /y", "apply", "bcdboot.exe",
                           "/f uefi", "bootsect.exe", "shutdown.exe -r -f -t 5"}) {
    while (at < ran.size() && !Contains(ran[at], step)) ++at;
    ASSERT_LT(at, ran.size()) << step;
  }
  EXPECT_TRUE(shop.processes.ranLike("/l de-DE"));
  EXPECT_THAT(shop.dialogs.messages.back().text, HasSubstr("S40\nS42"));
  EXPECT_FALSE(shop.form.unloaded());
  EXPECT_THAT(shop.journal(), HasSubstr("format.com E:"));
}

TEST(Installation, UnattendedRunsWithoutAQuestionAndEndsTheProgram) {
  Installer shop;
  auto switches = kUnattended;
  switches.push_back("/reboot");
  shop.start(switches);
  ASSERT_TRUE(shop.runUntil([&] { return shop.form.unloaded(); }));
  EXPECT_TRUE(shop.dialogs.messages.empty());
  EXPECT_TRUE(shop.processes.ranLike("wimlib-imagex.exe apply \"D:\\images\\win10.wim\" 2 E:\\ "));
  EXPECT_TRUE(shop.processes.ranLike("shutdown.exe -r"));
  EXPECT_TRUE(shop.processes.ranLike("format.com"));
}

TEST(Installation, UnattendedFormatsOnlyWhenTold) {
  Installer shop;
  shop.files.put("X:\\Pavoline\\Pavoline.ini", "[Option]\r\nNoFormatting=0\r\n");
  auto switches = kUnattended;
  std::erase(switches, "/formatinstpart");
  shop.start(switches);
  ASSERT_TRUE(shop.runUntil([&] { return shop.form.unloaded(); }));
  EXPECT_FALSE(shop.processes.ranLike("format.com"));
  EXPECT_TRUE(shop.files.exists("E:\\old.txt"));
}

TEST(Installation, UnattendedWithOtherPartitionsOrNoSourceInstallsNothing) {
  struct Case {
    std::string switchWord, messagePart;
  };
  for (const Case& c : {Case{"/instpart:Q:", ""}, Case{"/bootpart:E:\\", ""},
                        Case{"/source:D:\\images\\gone.wim", "gone.wim S11"}}) {
    Installer shop;
    auto switches = kUnattended;
    switches.push_back(c.switchWord);
    shop.start(switches);
    ASSERT_TRUE(shop.runUntil([&] { return shop.form.unloaded(); })) << c.switchWord;
    EXPECT_EQ(shop.dialogs.messages.size(), c.messagePart.empty() ? 0u : 1u) << c.switchWord;
    EXPECT_EQ(shop.count(c.messagePart), c.messagePart.empty() ? 0 : 1);
    EXPECT_FALSE(shop.processes.ranLike("format.com") || shop.processes.ranLike(" apply "));
  }
}

TEST(Installation, AutoTakesWhateverTheListsPreselected) {
  Installer shop;
  auto switches = kUnattended;
  switches.insert(switches.end(), {"/instpart:AUTO", "/bootpart:auto"});
  switches[0] = "/source:E:\\win10.wim";
  shop.files.put("E:\\win10.wim", "wim");
  shop.start(switches);
  ASSERT_TRUE(shop.runUntil([&] { return shop.form.unloaded(); }));
  EXPECT_TRUE(shop.processes.ranLike("format.com D:")) << "the first install row";
}

TEST(Installation, AFailedUnattendedApplyIsNotTriedAgain) {
  Installer shop;
  shop.toolDies = true;
  shop.start(kUnattended);
  ASSERT_TRUE(shop.runUntil([&] { return shop.count("S30") > 0 && shop.idle(); }));
  shop.run(60000);
  EXPECT_EQ(shop.count("S30"), 1);
  EXPECT_EQ(shop.form.progressBar1.value(), 0);
  EXPECT_FALSE(shop.processes.ranLike("bcdboot"));
}

TEST(Installation, OneStartAtATimeWhileAQuestionIsOpen) {
  Installer shop;
  shop.start();
  shop.fillIn();
  shop.dialogs.onMessage = [&](const auto&) {
    if (shop.dialogs.messages.size() < 5) shop.pressStart();
  };
  shop.pressStart();
  EXPECT_EQ(shop.count("S19"), 1);

  Installer unattended;
  auto switches = kUnattended;
  std::erase(switches, "/slient");
  unattended.dialogs.messageMs = 10000;  // the auto-start timer goes on meanwhile
  unattended.start(switches);
  ASSERT_TRUE(unattended.runUntil([&] { return unattended.form.unloaded(); }));
  EXPECT_EQ(unattended.count("S19"), 1);
}

TEST(Installation, WhatIsCheckedCannotBeChangedMeanwhile) {
  Installer shop;
  shop.start();
  shop.fillIn();
  bool lookedWhileListing = false;
  shop.processes.onStart("CxDir.exe", [&](testing::ToolRun& run) {
    run.print(500, shop.partitionLines);
    run.does(100, [&] {
      lookedWhileListing = true;
      for (const Control* input : std::initializer_list<const Control*>{
               &shop.form.combo1, &shop.form.combo[kEditions], &shop.form.text[kInstallPartition],
               &shop.form.check[kDoNotFormat], &shop.form.command1[kStart]}) {
        EXPECT_FALSE(input->enabled());
      }
    });
  });
  shop.dialogs.answers = {2};
  shop.pressStart();
  EXPECT_TRUE(lookedWhileListing);
  EXPECT_TRUE(shop.idle() && shop.form.command1[kStart].enabled());
}

TEST(Installation, CancelAtTheQuestionChangesNothing) {
  Installer shop;
  shop.start();
  shop.fillIn();
  shop.form.check[kDoNotFormat].setValue(1);
  shop.dialogs.answers = {2};
  shop.pressStart();
  EXPECT_THAT(shop.dialogs.messages.back().text, HasSubstr("S17 E: "));
  EXPECT_TRUE(shop.idle());
  EXPECT_FALSE(shop.processes.ranLike(" apply "));
}

struct RefusedCase {
  const char* name;
  void (*spoil)(Installer&);
  const char* message;
};

TEST(Installation, RefusesWithOneMessageAndUnderInstallEndsTheProgram) {
  const RefusedCase cases[] = {
      {"running system", [](Installer& s) { s.form.text[kInstallPartition].setText("x:"); },
       "S113"},
      {"source gone", [](Installer& s) { s.files.drop("D:\\images\\win10.wim"); }, "win10.wim S11"},
      {"no edition", [](Installer& s) { s.form.combo[kEditions].clear(); }, "S13"},
      {"boot gone", [](Installer& s) { s.form.text[kBootPartition].setText("Q:"); }, "S15 Q:"},
      {"boot empty", [](Installer& s) { s.form.text[kBootPartition].setText(""); }, "S15"},
      {"install empty", [](Installer& s) { s.form.text[kInstallPartition].setText(""); }, "S16"},
      {"install gone", [](Installer& s) { s.form.text[kInstallPartition].setText("G:"); },
       "S16 G:"},
      {"both gone",
       [](Installer& s) {
         s.form.text[kBootPartition].setText("G:");
         s.form.text[kInstallPartition].setText("G:");
       },
       "S16 G:"},
      {"named in a label only",
       [](Installer& s) { s.partitionLines.erase(s.partitionLines.find("2:1")); }, "S16 E:"},
      {"source on target", [](Installer& s) { s.form.text[kInstallPartition].setText("D:"); },
       "S73 D:"},
  };
  for (const RefusedCase& c : cases) {
    for (const bool install : {false, true}) {
      Installer shop;
      Session& session = shop.start();
      shop.fillIn();
      session.commandLine.install = install;
      session.autoStarted = true;
      c.spoil(shop);
      shop.pressStart();
      ASSERT_EQ(shop.dialogs.messages.size(), 1u) << c.name;
      EXPECT_THAT(shop.dialogs.messages[0].text, HasSubstr(c.message)) << c.name;
      EXPECT_EQ(shop.dialogs.messages[0].flags, 16) << c.name;
      EXPECT_EQ(shop.form.unloaded(), install) << c.name;
      EXPECT_FALSE(shop.processes.ranLike("format.com") || shop.processes.ranLike(" apply "));
    }
  }
}

TEST(Installation, TheRunningSystemIsRefusedBeforeAnythingElse) {
  Installer shop;
  shop.start();
  shop.form.text[kInstallPartition].setText("X:");
  shop.pressStart();
  ASSERT_EQ(shop.dialogs.messages.size(), 1u);
  EXPECT_EQ(shop.dialogs.messages[0].text, "S113");
}

TEST(Closing, AsksDuringAnInstallationAndEndsTheToolsInOrder) {
  Installer shop;
  Session& session = shop.start();
  shop.fillIn();
  shop.pressStart();
  shop.run(8000);
  session.mountedIsoDrive = "F:";
  for (const char* tool : {"DISM.EXE", "Ghost.exe"}) shop.processes.alreadyRunning(tool);

  shop.dialogs.answers = {2};
  EXPECT_FALSE(shop.form.close());
  EXPECT_TRUE(shop.form.busy && shop.processes.killed.empty());
  EXPECT_EQ(shop.dialogs.messages.back().flags, 17);

  EXPECT_TRUE(shop.form.close());
  EXPECT_THAT(shop.processes.killed,
              ::testing::ElementsAre("wimlib-imagex.exe", "Ghost.exe", "DISM.EXE"));
  EXPECT_TRUE(shop.processes.ranLike("imdisk.exe -D -m F:"));
  shop.run(60000);
  EXPECT_FALSE(shop.processes.ranLike("bcdboot")) << "nothing goes on after the end";
}

TEST(Closing, InTheMiddleOfTheFormatDoesNotApply) {
  Installer shop;
  shop.start();
  shop.fillIn();
  shop.time.after(300, [&] { shop.form.close(); });
  shop.pressStart();
  shop.run(60000);
  EXPECT_TRUE(shop.processes.ranLike("format.com"));
  EXPECT_FALSE(shop.processes.ranLike(" apply "));
}

TEST(Startup, EndsAtOnceWithoutTheImageTool) {
  Installer shop;
  shop.files.drop("X:\\Pavoline\\Bin\\wimlib-imagex");
  shop.environment.commandLine = {"X:\\Pavoline\\Pavoline.exe"};
  Program program(shop.platform, shop.form);
  EXPECT_FALSE(program.load());
  EXPECT_EQ(shop.count("S20"), 1);
}

TEST(Startup, ChoosesTheToolsByTheMachine) {
  for (const auto& [sysWow, is64, arch] :
       {std::tuple{true, false, "x64"}, {false, true, "x64"}, {false, false, "x86"}}) {
    Installer shop;
    shop.files.put("X:\\Pavoline\\Bin\\wimlib-imagex\\x86\\wimlib-imagex.exe");
    if (!sysWow) shop.files.drop("C:\\Windows\\SysWOW64");
    shop.environment.is64Bit = is64;
    EXPECT_EQ(shop.start().paths.imageToolArch, arch);
  }
}

TEST(Startup, GivesNewSystemsTheFolderAndTheLibraryTheyLack) {
  for (const auto& [version, folder, copied] : {std::tuple{"10.0.20265.1", false, true},
                                                {"10.0.20266.1", true, true},
                                                {"6.1.7601.1", false, false},
                                                {"", false, false}}) {
    Installer shop;
    shop.files.version("C:\\Windows\\System32\\kernel32.dll", version);
    shop.files.put("X:\\Pavoline\\coml2.dll", "new");
    shop.start();
    EXPECT_EQ(shop.files.exists("C:\\Windows\\SystemTemp"), folder) << version;
    EXPECT_EQ(shop.files.exists("C:\\Windows\\SysWOW64\\coml2.dll"), copied) << version;
  }
}

}  // namespace
}  // namespace pavoline
