// From the written image to the end of the installation: order of the steps, plug-in, restart.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/engine_shop.h"
#include "postinstall/plugins.h"
#include "postinstall/setup_ok.h"

namespace pavoline::testing {

using Commands = std::vector<std::string>;

TEST(SetupOK, GoesByTheVersionOfTheAppliedSystemAndTheTicks) {
  for (const auto& [version, sector, ticked, answerFileAndDrivers] :
       {std::tuple{"10.0.19041.1", "/nt60", true, true},
        {"10.0.19041.1", "/nt60", false, false},
        {"6.0.6000.1", "/nt60", true, true},
        {"5.2.3790.1", "/nt52", true, false},
        {"", "/nt52", true, false}}) {
    EngineShop w;
    w.applied(version);
    w.files.put("D:\\answer.xml", "\xEF\xBB\xBFtext");
    w.form.text[kAnswerFile].setText("D:\\answer.xml");
    w.form.text[kDriverFolder].setText("D:\\SOURCES");
    for (int box : {kUseAnswerFile, kAddDrivers}) w.form.check[box].setValue(ticked);
    SetupOK(w.session);
    EXPECT_TRUE(w.processes.ranLike(std::string("bootsect.exe ") + sector)) << version;
    EXPECT_EQ(w.files.exists("E:\\Windows\\Panther\\unattend.xml"), answerFileAndDrivers);
    EXPECT_EQ(w.processes.ranLike("dism.exe"), answerFileAndDrivers) << version;
    EXPECT_EQ(w.said("S40"), !answerFileAndDrivers) << "drivers go on to the end themselves";
  }
}

TEST(CallPlugin, RunsWhatTheTextMeans) {
  for (const auto& [text, ran] : std::initializer_list<std::pair<std::string, Commands>>{
           {"D:\\fix.exe %ip% %bp% %ip% ", {"D:\\fix.exe E: S: E:"}},
           {"D:\\fix.exe", {"D:\\fix.exe"}},
           {"D:\\%ip%.bat", {"D:\\%ip%.bat"}},
           {"D:\\none.exe /a", {}},
           {"D:\\none.exe", {}},
           {"MyTool", {"D:\\fix.exe /quiet E:"}},
           {"Bare", {"D:\\fix.exe"}},
           {"Gone", {}},
           {"", {}}}) {
    EngineShop w;
    for (const char* path : {"D:\\fix.exe", "D:\\%ip%.bat"}) w.files.put(path);
    w.session.plugins.add("MyTool", "D:\\fix.exe /quiet %ip%");
    w.session.plugins.add("Bare", "D:\\fix.exe");
    w.session.plugins.add("Gone", "D:\\gone.exe");
    w.form.combo2.setText(text);
    w.form.check[kRunPlugin].setValue(1);
    w.processes.onStart("fix.exe", [&](ToolRun& run) {
      run.does(500, [&] { EXPECT_TRUE(w.form.busy && w.form.status.text() == "S39"); });
    });
    CallPlugin(w.session);
    EXPECT_EQ(w.commands(), ran) << text;
    EXPECT_TRUE(ran.empty() || w.processes.started[0].mode == ShowMode::kNormal);
    EXPECT_TRUE(w.said("S40")) << text;
    EXPECT_FALSE(w.form.busy);
  }
}

TEST(CallPlugin, AnnouncesOrRestarts) {
  const std::string go = "shutdown.exe -r -f -t 5", stop = "shutdown.exe -a";
  struct Case {
    bool restart, silent, toolThere;
    int answer;
    Commands ran, heard;
  };
  for (const Case& c :
       {Case{false, false, true, 1, {}, {"S40|S8|64"}}, Case{false, true, true, 1, {}, {}},
        Case{true, false, false, 1, {}, {"S41|S8|64"}}, Case{true, true, false, 1, {}, {}},
        Case{true, false, true, 1, {go}, {"S40\nS42|S8|49"}},
        Case{true, false, true, 2, {go, stop}, {"S40\nS42|S8|49"}},
        Case{true, true, true, 2, {go}, {}}}) {
    EngineShop w;
    w.form.check[kRestart].setValue(c.restart);
    w.session.commandLine.silent = c.silent;
    w.session.exitAfterInstallation = c.silent;
    if (!c.toolThere) w.files.drop("C:\\Windows\\System32\\shutdown.exe");
    w.dialogs.answers = {c.answer};
    CallPlugin(w.session);
    EXPECT_EQ(w.commands(), c.ran);
    EXPECT_EQ(w.heard(), c.heard);
    EXPECT_FALSE(w.form.busy);
    EXPECT_EQ(w.form.unloaded(), c.silent);
  }
}

TEST(CallPlugin, ClosingDuringThePluginRestartsNothing) {
  EngineShop w;
  w.files.put("D:\\fix.exe");
  w.form.combo2.setText("D:\\fix.exe");
  for (int box : {kRunPlugin, kRestart}) w.form.check[box].setValue(1);
  w.closeDuring("fix.exe");
  CallPlugin(w.session);
  EXPECT_EQ(w.commands(), Commands{"D:\\fix.exe"});
  EXPECT_TRUE(w.dialogs.messages.empty());
}

}  // namespace pavoline::testing
