#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "postinstall/plugins.h"
#include "postinstall/restart.h"
#include "support/installer.h"

namespace pavoline::testing {

using ::testing::ElementsAre;
using Commands = std::vector<std::string>;

TEST(CallPlugin, RunsWhatTheTextMeans) {
  for (const auto& [text, ran] : std::initializer_list<std::pair<std::string, Commands>>{
           {"D:\\fix.exe %ip% %bp% %ip% ", {"D:\\fix.exe E: S: E:"}},
           {"\"D:\\fix.exe\" %ip%", {"\"D:\\fix.exe\" E:"}},
           {"D:\\fix.exe", {"D:\\fix.exe"}},
           {"D:\\%ip%.bat", {"D:\\%ip%.bat"}},
           {"D:\\none.exe /a", {}},
           {"D:\\none.exe", {}},
           {"MyTool", {"D:\\fix.exe /quiet E:"}},
           {"Bare", {"D:\\fix.exe"}},
           {"Gone", {}}}) {
    InstallShop w;
    for (const char* path : {"D:\\fix.exe", "D:\\%ip%.bat"}) w.files.put(path);
    w.session.plugins.add("MyTool", "D:\\fix.exe /quiet %ip%");
    w.session.plugins.add("Bare", "D:\\fix.exe");
    w.session.plugins.add("Gone", "D:\\gone.exe");
    CallPlugin(w.session, text, {"E:", "S:"});
    Commands started;
    for (const auto& program : w.processes.started) {
      started.push_back(program.command);
      EXPECT_EQ(program.mode, ShowMode::kNormal);
    }
    EXPECT_EQ(started, ran) << text;
    EXPECT_EQ(w.form.status.text(), "RunningPlugin");
  }
}

TEST(RestartMachine, TakesTheToolThatIsThereAndCanBeCalledOff) {
  const std::string go = "shutdown.exe -r -f -t 5", stop = "shutdown.exe -a";
  const std::string wpe = "C:\\Windows\\System32\\wpeutil.exe", reboot = wpe + " reboot";
  const std::string asked = "Finished\nRestarting|Information|49",
                    counted = "Finished\nRestartsSoon|Information|49";
  constexpr std::nullopt_t kNobody = std::nullopt;
  struct Case {
    const char* tool;
    bool silent;
    std::optional<Answer> answer;
    Commands ran, heard;
  };
  for (const Case& c :
       {Case{"shutdown", false, kAnswerOk, {go}, {asked}},
        Case{"shutdown", false, kAnswerCancel, {go, stop}, {asked}},
        Case{"shutdown", false, kNobody, {go}, {asked}}, Case{"shutdown", true, kNobody, {go}, {}},
        Case{"failing", false, kAnswerOk, {go, reboot}, {asked, counted}},
        Case{"failing", false, kAnswerCancel, {go}, {asked}},
        Case{"failing", true, kNobody, {go, reboot}, {}},
        Case{"wpeutil", false, kAnswerOk, {reboot}, {counted}},
        Case{"wpeutil", false, kAnswerCancel, {}, {counted}},
        Case{"wpeutil", false, kNobody, {reboot}, {counted}},
        Case{"wpeutil", true, kNobody, {reboot}, {}},
        Case{"", false, kAnswerOk, {}, {"NoShutdown|Information|64"}},
        Case{"", true, kNobody, {}, {}}}) {
    InstallShop w;
    const std::string tool = c.tool;
    const bool fails = tool == "failing";
    if (tool != "shutdown" && !fails) w.files.drop("C:\\Windows\\System32\\shutdown.exe");
    if (tool == "wpeutil" || fails) w.files.put(wpe);
    w.session.commandLine.silent = c.silent;
    w.session.commandLine.install = c.answer == kNobody;
    w.dialogs.nobodyThere = c.answer == kNobody;
    if (c.answer != kNobody) w.dialogs.answers = {*c.answer, *c.answer};
    w.processes.onStart("-r -f", [&](ToolRun& run) { run.endsAt(3000), run.exits(fails); });
    const long began = w.time.now();
    RestartMachine(w.session, "Finished");
    EXPECT_EQ(w.commands(), c.ran) << tool;
    EXPECT_EQ(w.heard(), c.heard) << tool;
    if (c.ran == Commands{go, stop}) {
      EXPECT_GE(w.processes.started.back().at - began, 3000) << "nothing to call off before";
    }
    if (tool == "wpeutil" && !c.silent) {
      EXPECT_EQ(w.dialogs.messages[0].limit.seconds, 5) << "its own countdown";
    }
  }
}

}  // namespace pavoline::testing
