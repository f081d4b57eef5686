// Whole installations, from the first key to idle or to the end of the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer.h"
#include "platform/text.h"

namespace pavoline {

using namespace ::testing;

using testing::Installer;

const std::vector<std::string> kUnattended = {"/source:D:\\images\\win10.wim",
                                              "/wimindex:2",
                                              "/instpart:E:",
                                              "/bootpart:S:",
                                              "/formatinstpart",
                                              "/install",
                                              "/slient"};

// Started and filled in, so that only Start is to be pressed.
struct Filled : Installer {
  Filled() { start(), fillIn(); }
};

TEST(Installation, AttendedRunsEveryStepInOrderAndReturnsToIdle) {
  Filled shop;
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

// Begins an installation without a person and waits until the program has ended.
struct Unattended : Installer {
  explicit Unattended(
      std::vector<std::string> more, const char* without = "",
      const std::function<void(Unattended&)>& arrange = [](Unattended&) {}) {
    arrange(*this);
    auto switches = kUnattended;
    std::erase(switches, without);
    switches.insert(switches.end(), more.begin(), more.end());
    start(switches);
    EXPECT_TRUE(runUntil([&] { return form.unloaded(); }));
  }
};

TEST(Installation, UnattendedRunsWithoutAQuestionAndEndsTheProgram) {
  Unattended shop({"/reboot"});
  EXPECT_TRUE(shop.dialogs.messages.empty());
  EXPECT_TRUE(shop.processes.ranLike("wimlib-imagex.exe apply \"D:\\images\\win10.wim\" 2 E:\\ "));
  EXPECT_TRUE(shop.processes.ranLike("shutdown.exe -r") && shop.processes.ranLike("format.com"));

  Unattended told({}, "/formatinstpart", [](Unattended& w) {
    w.files.put("X:\\Pavoline\\Pavoline.ini", "[Option]\r\nNoFormatting=0\r\n");
  });
  EXPECT_FALSE(told.processes.ranLike("format.com"));
  EXPECT_TRUE(told.files.exists("E:\\old.txt"));
}

TEST(Installation, UnattendedWithOtherPartitionsOrNoSourceInstallsNothing) {
  using Case = std::tuple<std::string, std::vector<std::string>>;
  for (const auto& [switchWord, heard] :
       {Case{"/instpart:Q:", {}}, Case{"/bootpart:E:\\", {}},
        Case{"/source:D:\\images\\gone.wim", {"d:\\images\\gone.wim S11|S12|16"}}}) {
    Unattended shop({switchWord});
    EXPECT_EQ(shop.heard(), heard) << switchWord;
    EXPECT_FALSE(shop.processes.ranLike("format.com") || shop.processes.ranLike(" apply "));
  }
}

TEST(Installation, AutoTakesWhateverTheListsPreselected) {
  Unattended shop({"/instpart:AUTO", "/bootpart:auto", "/source:E:\\win10.wim"}, "",
                  [](Unattended& w) { w.files.put("E:\\win10.wim", "wim"); });
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
  Filled shop;
  shop.dialogs.onMessage = [&](const auto&) {
    if (shop.dialogs.messages.size() < 5) shop.pressStart();
  };
  shop.pressStart();
  EXPECT_EQ(shop.count("S19"), 1);

  Unattended unattended({}, "/slient", [](Unattended& w) {
    w.dialogs.messageMs = 10000;  // the auto-start timer goes on meanwhile
  });
  EXPECT_EQ(unattended.count("S19"), 1);
}

TEST(Installation, WhatIsCheckedCannotBeChangedMeanwhileAndCancelChangesNothing) {
  Filled shop;
  shop.form.check[kDoNotFormat].setValue(1);
  bool looked = false;
  shop.processes.onStart("CxDir.exe", [&](testing::ToolRun& run) {
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
  EXPECT_THAT(shop.dialogs.messages.back().text, HasSubstr("S17 E: "));
  EXPECT_FALSE(shop.processes.ranLike(" apply "));
  EXPECT_TRUE(looked && shop.idle() && shop.form.command1[kStart].enabled());
}

TEST(Installation, RefusesWithOneMessageAndUnderInstallEndsTheProgram) {
  const auto installTo = [](const char* drive) {
    return [drive](Installer& s) { s.form.text[kInstallPartition].setText(drive); };
  };
  const auto bootFrom = [](const char* drive) {
    return [drive](Installer& s) { s.form.text[kBootPartition].setText(drive); };
  };
  using Spoil = std::function<void(Installer&)>;
  const std::tuple<const char*, Spoil, const char*> cases[] = {
      {"running system", installTo("x:"), "S113"},
      {"no source either", [&](Installer& s) { s.form.combo1.setText(""), installTo("X:")(s); },
       "S113"},
      {"source gone", [](Installer& s) { s.files.drop("D:\\images\\win10.wim"); }, "win10.wim S11"},
      {"no edition", [](Installer& s) { s.form.combo[kEditions].clear(); }, "S13"},
      {"boot gone", bootFrom("Q:"), "S15 Q:"},
      {"boot empty", bootFrom(""), "S15"},
      {"install empty", installTo(""), "S16"},
      {"install gone", installTo("G:"), "S16 G:"},
      {"both gone", [&](Installer& s) { bootFrom("G:")(s), installTo("G:")(s); }, "S16 G:"},
      {"named in a label only",
       [](Installer& s) { s.partitionLines.erase(s.partitionLines.find("2:1")); }, "S16 E:"},
      {"source on target", installTo("D:"), "S73 D:"}};
  for (const auto& [name, spoil, message] : cases) {
    for (const bool install : {false, true}) {
      Filled shop;
      Session& session = shop.program->session();
      session.commandLine.install = install;
      session.autoStarted = true;
      spoil(shop);
      shop.pressStart();
      EXPECT_THAT(shop.heard(), ElementsAre(AllOf(HasSubstr(message), HasSubstr("|16")))) << name;
      EXPECT_EQ(shop.form.unloaded(), install) << name;
      EXPECT_FALSE(shop.processes.ranLike("format.com") || shop.processes.ranLike(" apply "));
    }
  }
}

TEST(Closing, AsksDuringAnInstallationAndEndsTheToolsInOrder) {
  Filled shop;
  shop.pressStart();
  shop.run(8000);
  shop.program->session().mountedIsoDrive = "F:";
  for (const char* tool : {"DISM.EXE", "Ghost.exe"}) shop.processes.alreadyRunning(tool);

  shop.dialogs.answers = {2};
  EXPECT_FALSE(shop.form.close());
  EXPECT_TRUE(shop.form.busy && shop.processes.killed.empty());
  EXPECT_EQ(shop.dialogs.messages.back().flags, 17);

  EXPECT_TRUE(shop.form.close());
  EXPECT_THAT(shop.processes.killed, ElementsAre("wimlib-imagex.exe", "Ghost.exe", "DISM.EXE"));
  EXPECT_TRUE(shop.processes.ranLike("imdisk.exe -D -m F:"));
  shop.run(60000);
  EXPECT_FALSE(shop.processes.ranLike("bcdboot")) << "nothing goes on after the end";
}

TEST(Startup, EndsAtOnceWithoutTheImageTool) {
  Installer shop;
  shop.files.drop("X:\\Pavoline\\Bin\\wimlib-imagex");
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

}  // namespace pavoline
