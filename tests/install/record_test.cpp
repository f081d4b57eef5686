// Where the record of an unattended run is found afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

constexpr char kInSystem[] = "E:\\Windows\\Panther\\Pavoline.log";

struct Hall : Installer {
  Hall() {
    environment.firmwareBytes = FirmwareTable("5CG/1", "HP 840");
    dialogs.nobodyThere = true;
    copies([](ToolRun&) {});
  }
  // The interpreter copies the record, or does what `otherwise` says.
  void copies(std::function<void(ToolRun&)> otherwise) {
    processes.onStart("copy /y /b", [this, otherwise](ToolRun& run) {
      const auto words = Split(run.line, "\"");
      run.does(3000, [this, from = words.at(words.size() - 5), to = words.at(words.size() - 3)] {
        files.put(to, files.text(from));
      });
      otherwise(run);
    });
  }
  std::string inFolder() {
    const auto found = files.below("D:\\Rec");
    return found.empty() ? "" : files.text(found.front());
  }
};

TEST(Record, IsCopiedWithItsEndBeforeTheRestart) {
  Hall w;
  w.processes.onStart("shutdown.exe", [&](ToolRun&) {
    for (const std::string& copy : {w.inFolder(), w.files.text(kInSystem)}) {
      EXPECT_THAT(copy, AllOf(HasSubstr("machine: serial number 5CG/1, model HP 840"),
                              HasSubstr("installing edition 2 \"Pro"), HasSubstr("took 24"),
                              HasSubstr("step ended: apply, 23"), HasSubstr("\r\n2024-05-06 "),
                              HasSubstr("outcome: done, exit code 0\r\n")));
    }
  });
  EXPECT_EQ(w.unattended({"/logdir:D:\\Rec\\%MODEL%\\", "/reboot"}), 0);
  EXPECT_THAT(w.files.below("D:\\Rec"),
              ElementsAre(MatchesRegex(R"(d:\\rec\\hp 840\\5cg-1-20240506-0000[0-9]+\.log)")));
  EXPECT_TRUE(w.processes.ranLike("shutdown.exe -r"));
}

TEST(Record, IsKeptOfEveryEndAndChangesNone) {
  struct Case {
    const char* what;
    int code;
    bool inSystem, inFolder;
    std::function<void(Hall&)> arrange;
  };
  const auto fails = [](const char* tool) {
    return [=](Hall& w) { w.processes.onStart(tool, [](ToolRun& run) { run.exits(72); }); };
  };
  for (const Case& c :
       {Case{"boot files lacking", 5, true, true, fails("bcdboot.exe")},
        Case{"not applied", 3, false, true, fails(" apply ")},
        Case{"refused", 1, false, true, fails("info --xml")},
        Case{"no tool", 4, false, true,
             [](Hall& w) { w.files.drop("X:\\Pavoline\\Bin\\wimlib-imagex"); }},
        Case{"no serial number", 0, true, false,
             [](Hall& w) { w.environment.firmwareBytes = FirmwareTable("None", "0"); }},
        Case{"share that does not answer", 0, true, false,
             [](Hall& w) {
               w.copies([](ToolRun& run) {
                 run = ToolRun();
                 run.neverEnds();
               });
             }},
        Case{"closed while it is copied", 0, true, true,
             [](Hall& w) {
               w.copies([&](ToolRun& run) { run.does(1000, [&] { w.form.unload(); }); });
             }},
        Case{"closed while a failure is copied", 3, false, true,
             [](Hall& w) {
               w.processes.onStart(" apply ", [](ToolRun& run) { run.exits(72); });
               w.copies([&](ToolRun& run) { run.does(1000, [&] { w.form.unload(); }); });
               w.dialogs.onMessage = [](const auto&) { ADD_FAILURE() << "over a closed window"; };
             }},
        Case{"fault", 7, false, true,
             [](Hall& w) { w.time.after(8000, [&] { w.program->fault("why"); }); }},
        Case{"closed behind the image", 6, true, true, [](Hall& w) {
               w.processes.onStart("bcdboot.exe",
                                   [&](ToolRun& run) { run.does(1, [&] { w.form.unload(); }); });
             }}}) {
    Hall w;
    c.arrange(w);
    w.start({"/source:D:\\SOURCES\\INSTALL.WIM", "/wimindex:1", "/instpart:E:", "/bootpart:S:",
             "/formatinstpart", "/install", "/slient", "/reboot", "/logdir:D:\\Rec\\%serial%"});
    w.runUntil([&] { return w.form.unloaded(); });
    const long ended = w.time.now();
    w.run(5000);
    EXPECT_EQ(w.program->exitCode(), c.code) << c.what;
    EXPECT_EQ(w.files.exists(kInSystem), c.inSystem) << c.what;
    EXPECT_EQ(Contains(w.inFolder(), "exit code " + std::to_string(c.code)), c.inFolder) << c.what;
    EXPECT_EQ(w.processes.ranLike("shutdown"), c.code == 0 && !c.inFolder) << c.what;
    EXPECT_LE(ended, c.code == 0 ? 50'000 : 80'000) << c.what;
  }
}

}  // namespace pavoline::testing
