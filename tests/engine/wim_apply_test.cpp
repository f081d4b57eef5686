#include "engine/wim_apply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/engine_shop.h"

namespace pavoline::testing {

using namespace ::testing;

const std::string kApply = "\"X:\\Pavoline\"\\Bin\\wimlib-imagex\\x64\\wimlib-imagex.exe apply ";
const std::string kInto = " >C:\\Windows\\temp\\apply.xml\r\n";

TEST(WimSetup, FormatsWithTheLabelKeptAndStartsTheApply) {
  EngineShop w;
  w.session.applyOptions = "--compact=lzx";
  w.time.after(100, [&] { EXPECT_EQ(w.form.status.text(), "S31 E:"); });
  WimSetup(w.session);
  EXPECT_EQ(w.commands().at(0), "C:\\Windows\\System32\\format.com E: /FS:NTFS /v:MyDisk /q /x /y");
  EXPECT_EQ(w.processes.started[0].mode, ShowMode::kHidden);
  EXPECT_THAT(w.taskbar.states, ElementsAre(TaskbarState::kIndeterminate, TaskbarState::kNone));
  EXPECT_EQ(w.processes.started.at(1).script,
            kApply + "\"D:\\SOURCES\\INSTALL.WIM\" 2 E:\\ --compact=lzx" + kInto);
  EXPECT_TRUE(w.form.timer1.enabled());
}

TEST(WimSetup, KeepsThePartitionWhenToldToAndCopiesNoEsd) {
  EngineShop w;
  w.form.check[kDoNotFormat].setValue(1);
  w.form.combo[kEditions].select(0);
  w.form.combo1.setText("D:\\a & b\\50% \xE4\xB8\x8A.ESD");
  w.files.put(w.form.combo1.text());
  w.files.shortNames = false;
  w.text.codePage = "CP936";
  w.session.wimcopy = true;
  WimSetup(w.session);
  ASSERT_EQ(w.processes.started.size(), 1u);
  EXPECT_EQ(w.processes.started[0].script,
            kApply + "\"D:\\a & b\\50%% \xC9\xCF.ESD\" 1 E:\\ " + kInto);
  EXPECT_TRUE(w.taskbar.states.empty());
}

TEST(WimSetup, ALabelCannotBringOptions) {
  for (const auto& [label, option] :
       {std::pair{"", ""}, {"a /fs:FAT \"b\"\r\n", " /v:afs:FATb"}, {" / ", ""}}) {
    EngineShop w;
    w.session.target.volumeLabel = label;
    WimSetup(w.session);
    EXPECT_THAT(w.commands().at(0), HasSubstr("/FS:NTFS" + std::string(option) + " /q /x /y"));
  }
}

TEST(WimSetup, WithoutFormatComNothingIsStarted) {
  for (const bool unattended : {false, true}) {
    EngineShop w;
    w.session.commandLine.install = unattended;
    w.files.drop("C:\\Windows\\System32\\format.com");
    WimSetup(w.session);
    EXPECT_THAT(w.heard(), ElementsAre("S32\nS33\nS34\nS35|S22|48"));
    EXPECT_FALSE(w.form.busy || w.form.timer1.enabled());
    EXPECT_EQ(w.form.unloaded(), unattended);
    EXPECT_TRUE(w.processes.started.empty());
  }
}

TEST(WimSetup, FormatsNothingWhenItsFilesCannotBeWritten) {
  for (const long sinceStart : {0, 1000}) {  // before, or during the formatting
    EngineShop w;
    w.files.put("C:\\Windows\\temp\\apply.bat", "stale");
    w.time.after(sinceStart, [&] { w.files.full("C:\\Windows\\temp"); });
    w.run(0);
    WimSetup(w.session);
    EXPECT_TRUE(w.said("S30"));
    EXPECT_FALSE(w.form.busy || w.form.timer1.enabled());
    EXPECT_EQ(w.files.exists("E:\\old.txt"), sinceStart == 0);
    EXPECT_FALSE(w.processes.ranLike("stale") || w.processes.ranLike("apply"));
  }
}

TEST(WimSetup, CopiesTheImageForWimboot) {
  EngineShop w;
  w.session.wimcopy = true;
  w.session.applyOptions = "--wimboot";
  WimSetup(w.session);
  ASSERT_EQ(w.processes.started.size(), 4u);
  EXPECT_EQ(w.processes.started[1].script,
            "takeown /f \"E:\\SYSTEM~1\" /a /r /d y >C:\\Windows\\temp\\takeown.log\r\n");
  EXPECT_EQ(w.processes.started[2].script,
            "echo y|cacls \"E:\\SYSTEM~1\" /T /Grant SYSTEM:F >C:\\Windows\\temp\\cacls.log\r\n");
  EXPECT_EQ(w.processes.started[3].script,
            kApply + "\"E:\\SYSTEM~1\\Install.wim\" 2 E:\\ --wimboot" + kInto);
  EXPECT_EQ(w.files.text("E:\\System Volume Information\\Install.wim"), std::string(1000, 'i'));
  EXPECT_EQ(w.form.status.text(), "S111");
  EXPECT_THAT(w.taskbar.values, ElementsAre(25, 50, 75, 100));
}

TEST(WimSetup, AFailedCopyEndsTheInstallation) {
  EngineShop w;
  w.session.wimcopy = true;
  w.files.failNext(FileOperation::kCopy);
  WimSetup(w.session);
  EXPECT_THAT(w.heard(), ElementsAre("Copy failed! |S8|16"));
  EXPECT_EQ(w.form.progressBar1.value(), 0);
  EXPECT_FALSE(w.form.busy || w.processes.ranLike("apply"));
}

TEST(WimSetup, ClosingTheWindowEndsItAtOnce) {
  for (const std::string during : {"format.com", "takeown", "the copy", "cacls"}) {
    EngineShop w;
    w.session.wimcopy = true;
    w.closeDuring(during);
    if (during == "the copy") w.time.after(4001, [&] { w.form.unload(); });
    WimSetup(w.session);
    EXPECT_THAT(w.processes.ran.back(), HasSubstr(during == "the copy" ? "takeown" : during));
    EXPECT_EQ(w.files.exists("E:\\System Volume Information\\Install.wim"), during == "cacls");
    EXPECT_FALSE(w.form.timer1.enabled()) << during;
    EXPECT_TRUE(w.dialogs.messages.empty()) << during;
  }
}

}  // namespace pavoline::testing
