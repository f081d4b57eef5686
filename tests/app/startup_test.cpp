#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/installer.h"

namespace pavoline {

using testing::Installer;

// The switch beats the file, and what is saved goes back to where it was read from.
TEST(Startup, ReadsTheSettingsFileThatIsNamedAndNoOther) {
  constexpr char kHall[] = "X:\\Pavoline\\Halls\\A1.ini", kUsual[] = "X:\\Pavoline\\Pavoline.ini";
  const std::string usual = "[Option]\r\nPCUser=Usual\r\n";
  for (const bool there : {true, false}) {
    Installer w;
    w.environment.firmwareBytes = testing::FirmwareTable("A1", "M");
    w.files.put(kUsual, usual);
    if (there) w.files.put(kHall, "[Option]\r\nComputerName=X\r\nAddDriverFile=D:\\a\r\n");
    Session& session = w.start({"/ini:Halls\\%serial%.ini", "/name:A-%serial%", "/answer:b.xml"});
    EXPECT_EQ(w.count("NoSettings X:\\Pavoline\\Halls\\A1.ini"), there ? 0 : 1);
    EXPECT_EQ(w.program->exitCode(), there ? 6 : 1);
    if (!there) continue;
    EXPECT_TRUE(w.form.check[kUseAnswerFile].ticked() && !w.form.check[kAddDrivers].ticked());
    EXPECT_EQ(session.options.pcUser + session.options.computerName, "A-%serial%");
    EXPECT_TRUE(w.form.onSystemCommand(2000));
    EXPECT_TRUE(Contains(w.files.text(kHall), "ComputerName=A-%serial%\r\n"));
    EXPECT_EQ(w.files.text(kUsual), usual);
  }
}

TEST(Startup, SpeaksAsTheSystemUnlessToldALocaleThatItKnows) {
  for (const unsigned unknown : {0u, 1031u}) {
    Installer w;
    for (const char* file : {"1031", "1033"}) {
      w.files.put("X:\\Pavoline\\Lang\\" + std::string(file) + ".lng", "[Language]\r\n");
    }
    w.environment.unknownLocale = unknown;
    EXPECT_EQ(w.start({"/lng:1031"}).language, unknown == 0 ? 1031u : 1033u);
  }
}

TEST(Startup, ChoosesTheToolsByTheMachine) {
  for (const bool is64 : {true, false}) {
    Installer w;
    w.files.put("X:\\Pavoline\\Bin\\wimlib-imagex\\x86\\wimlib-imagex.exe");
    w.files.drop("C:\\Windows\\SysWOW64");
    w.environment.is64Bit = is64;
    EXPECT_EQ(w.start().paths.imageToolArch, is64 ? "x64" : "x86");
  }
}

TEST(Startup, GivesSystemsWhatTheirVersionLacksAndHas) {
  for (const auto& [version, folder, copied, taskbar] :
       {std::tuple{"10.0.20265.1", false, true, true},
        {"10.0.20266.1", true, true, true},
        {"6.1.7601.1", false, false, true},
        {"6.0.6002.1", false, false, false},
        {"", false, false, false}}) {
    Installer w;
    w.files.version("C:\\Windows\\System32\\kernel32.dll", version);
    w.files.put("X:\\Pavoline\\coml2.dll", "new");
    w.taskbar.created = false;
    w.start();
    EXPECT_EQ(w.files.exists("C:\\Windows\\SystemTemp"), folder) << version;
    EXPECT_EQ(w.files.exists("C:\\Windows\\SysWOW64\\coml2.dll"), copied) << version;
    EXPECT_EQ(w.taskbar.created, taskbar) << version;
  }
}

TEST(Startup, GoesNoFurtherOnceClosed) {
  for (const char* during : {"CxDir.exe", "info --xml"}) {
    Installer w;
    w.processes.onStart(during,
                        [&](testing::ToolRun& run) { run.does(1, [&] { w.form.unload(); }); });
    w.start({"/source:D:\\SOURCES\\INSTALL.WIM"});
    EXPECT_EQ(w.running().activity, Activity::kClosed);
    EXPECT_TRUE(Contains(w.processes.ran.back(), during) && !w.form.timer4.enabled());
    EXPECT_TRUE(w.dialogs.messages.empty());
    const std::string journal = w.files.text("C:\\Windows\\temp\\Pavoline.log");
    EXPECT_EQ(Split(journal.substr(journal.find("closed, exit")), "\r\n").size(), 3u)
        << "the tool's";
  }
}

}  // namespace pavoline
