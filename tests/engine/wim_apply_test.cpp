#include "engine/wim_apply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/format_partition.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

const std::string kApply = "\"X:\\Pavoline\"\\Bin\\wimlib-imagex\\x64\\wimlib-imagex.exe apply ";
const std::string kInto = " >C:\\Windows\\temp\\apply.xml\r\n";
const std::string kFormat = "C:\\Windows\\System32\\format.com";

TEST(Format, KeepsALabelThatCanBeGiven) {
  for (const auto& [label, option] : std::initializer_list<std::pair<std::string, std::string>>{
           {"My Disk", " /v:MyDisk"},
           {"\xE4\xB8\x8A", " /v:\xE4\xB8\x8A"},
           {"", ""},
           {" ", ""},
           {"a /fs:FAT", ""},
           {"a \"b\"\r\n", ""},
           {"W?ndows", ""},
           {"R&D=1", ""},
           {std::string(33, 'x'), ""}}) {
    InstallShop w;
    w.plan.target.label = label;
    w.time.after(100, [&] { EXPECT_EQ(w.form.status.text(), "Formatting E:"); });
    EXPECT_EQ(FormatInstallPartition(w.session, w.plan).kind, StepResult::kDone);
    EXPECT_EQ(w.processes.started.at(0).command, kFormat + " E: /FS:NTFS" + option + " /q /x /y");
    EXPECT_EQ(w.processes.started[0].mode, ShowMode::kHidden);
    EXPECT_THAT(w.taskbar.states, ElementsAre(TaskbarState::kIndeterminate, TaskbarState::kNone));
  }
}

TEST(Format, IsNotStarted) {
  InstallShop w;
  w.processes.failNextStarts = 1;
  EXPECT_EQ(FormatInstallPartition(w.session, w.plan).failure.text, "NotStarted " + kFormat);
}

TEST(WimSetup, FormatsNothingWhenItsFilesCannotBeWritten) {
  const auto full = [](InstallShop& w) { w.files.noRoom = "C:\\Windows\\temp"; };
  using Spoil = std::function<void(InstallShop&)>;
  for (const auto& [spoil, code, heard] :
       std::initializer_list<std::tuple<Spoil, int, const char*>>{
           {[&](InstallShop& w) { w.time.after(10, [&] { full(w); }); }, 3, "ApplyFailed|Error|16"},
           {[&](InstallShop& w) { w.files.stuck = {"C:\\Windows\\temp\\apply.bat"}; }, 1,
            "TempFile C:\\Windows\\temp\\apply.bat|Error|16"}}) {
    InstallShop w;
    w.files.put("C:\\Windows\\temp\\apply.bat", "stale");
    spoil(w);
    EXPECT_EQ(w.install(), code);
    EXPECT_THAT(w.heard(), ElementsAre(heard));
    EXPECT_EQ(w.files.exists("E:\\old.txt"), code == 1);
    EXPECT_FALSE(w.processes.ranLike("stale") || w.processes.ranLike(" apply "));
  }
}

TEST(WimSetup, CopiesTheImageForWimboot) {
  InstallShop w;
  w.plan.apply = {"--wimboot", true};
  w.begin();
  ASSERT_EQ(w.processes.started.size(), 5u);
  EXPECT_EQ(w.processes.started[2].script,
            "takeown /f \"E:\\SYSTEM~1\" /a /r /d y >C:\\Windows\\temp\\takeown.log\r\n");
  EXPECT_EQ(w.processes.started[3].script,
            "echo y|cacls \"E:\\SYSTEM~1\" /T /Grant SYSTEM:F >C:\\Windows\\temp\\cacls.log\r\n");
  EXPECT_EQ(w.processes.started[4].script,
            kApply + "\"E:\\SYSTEM~1\\Install.wim\" 2 E:\\ --wimboot" + kInto);
  EXPECT_EQ(w.files.text("E:\\System Volume Information\\Install.wim"), std::string(1000, 'i'));
  EXPECT_EQ(w.form.status.text(), "CopyingImage");
  EXPECT_THAT(w.taskbar.values, ElementsAre(25, 50, 75, 100));

  InstallShop failing;
  failing.plan.apply = w.plan.apply;
  failing.files.failNext(FileOperation::kCopy);
  EXPECT_EQ(failing.install(), 3);
  EXPECT_THAT(failing.heard(), ElementsAre("Copy failed! |Information|16"));
  EXPECT_EQ(failing.form.progressBar1.value(), 0);
  EXPECT_FALSE(failing.processes.ranLike(" apply "));
}

}  // namespace pavoline::testing
