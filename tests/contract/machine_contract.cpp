#include <gmock/gmock.h>

#include <algorithm>

#include "contract/contract_test.h"
#include "platform/text.h"

namespace pavoline::testing {

using namespace ::testing;

class ProcessContract : public Contract {
 protected:
  std::unique_ptr<StartedProgram> startWriter(int milliseconds) {
    return start(machine_->writer(file_, milliseconds));
  }
  std::unique_ptr<StartedProgram> start(const std::string& commandLine,
                                        const std::string& outputFile = {}) {
    StartRequest request;
    request.commandLine = commandLine;
    request.outputFile = outputFile;
    return platform_.processes.start(request);
  }
  void waitFor(StartedProgram& program) {
    while (program.running()) program.waitHandlingEvents();
  }
  // Other programs than this test's own.
  std::vector<RunningProcess> writers() {
    std::vector<RunningProcess> result;
    for (const RunningProcess& process : platform_.processes.list()) {
      const bool mine = std::any_of(before_.begin(), before_.end(),
                                    [&](const auto& old) { return old.id == process.id; });
      if (!mine && LowerAscii(process.imageName) == kWriterImage) result.push_back(process);
    }
    return result;
  }

  std::string file_ = path("a file.txt");
  std::vector<RunningProcess> before_ = platform_.processes.list();
};

TEST_F(ProcessContract, AProgramRunsUntilItHasDoneItsWork) {
  EXPECT_FALSE(before_.empty());
  const auto program = startWriter(1500);
  ASSERT_TRUE(program);
  ASSERT_EQ(writers().size(), 1u);
  EXPECT_EQ(writers()[0].id, program->id());
  std::string seen;  // the file is read while it is written
  while (program->running() && seen.empty()) {
    platform_.processes.handleEvents();
    seen = files_.readPart(file_, 1, 3).value_or("");
  }
  EXPECT_EQ(seen, "egi");
  EXPECT_FALSE(program->exitCode());
  waitFor(*program);
  EXPECT_THAT(files_.read(file_), Optional(std::string("beginend")));
  EXPECT_THAT(program->exitCode(), Optional(kWriterCode));
  EXPECT_TRUE(writers().empty());
  program->waitHandlingEvents();  // returns at once
}

TEST_F(ProcessContract, AnEndIsToldOnceToWhoeverStillHoldsTheProgram) {
  std::vector<std::string> told;
  auto held = startWriter(300), dropped = start(machine_->writer(path("dropped"), 200));
  auto ended = start(machine_->writer(path("ended"), 0));
  waitFor(*ended);
  ended->whenEnded([&] { told.push_back("ended"); });
  held->whenEnded([&] { told.push_back("replaced"); });
  held->whenEnded([&] {
    held.reset();
    ended->whenEnded([&] { told.push_back("again"); });
    told.push_back("held");
  });
  dropped->whenEnded([&] { told.push_back("dropped"); });
  dropped.reset();
  const std::uint64_t begin = platform_.environment.milliseconds();
  platform_.processes.handleEventsFor(1500);
  EXPECT_GE(platform_.environment.milliseconds(), begin + 1490);
  EXPECT_THAT(told, ElementsAre("ended", "held", "again"));
}

TEST_F(ProcessContract, AProgramLetGoRunsOn) {
  startWriter(300).reset();
  ASSERT_EQ(writers().size(), 1u);
  waitFor(*start(machine_->writer(path("later"), 1500)));
  EXPECT_THAT(files_.read(file_), Optional(std::string("beginend")));
}

TEST_F(ProcessContract, ATerminatedProgramIsGone) {
  const auto program = startWriter(20000);
  ASSERT_TRUE(program);
  platform_.processes.terminate(program->id());
  waitFor(*program);
  EXPECT_THAT(program->exitCode(), Optional(1u));
  EXPECT_TRUE(writers().empty());
  EXPECT_NE(files_.read(file_), "beginend");
  platform_.processes.terminate(0xFFFFFFF0);  // nobody's: ignored
}

TEST_F(ProcessContract, ABatchFileGoesOnWithItsNextLineWhenAProgramIsTerminated) {
  const auto variable = [&](const char* name) { return platform_.environment.variable(name); };
  files_.write(path("t.bat"), "@echo off\r\n" + variable("ComSpec") + " /c exit 3\r\n" +
                                  machine_->writer(file_, 1500) + "\r\necho 100%% of %windir%>" +
                                  path("t.log") + "\r\n");
  const auto program = start(path("t.bat"));
  ASSERT_TRUE(program);
  while (program->running() && writers().empty()) platform_.processes.handleEvents();
  ASSERT_EQ(writers().size(), 1u);
  EXPECT_FALSE(files_.exists(path("t.log")));
  platform_.processes.terminate(writers()[0].id);
  waitFor(*program);
  EXPECT_TRUE(writers().empty());
  EXPECT_THAT(program->exitCode(), Optional(1u));
  EXPECT_THAT(files_.read(path("t.log")), Optional("100% of " + variable("windir") + "\r\n"));
  waitFor(*start(machine_->writer(path("later"), 2000)));
  EXPECT_NE(files_.read(file_), "beginend");  // what it had left to do was not done
}

TEST_F(ProcessContract, WhatAProgramSaysLandsInTheFileGivenForIt) {
  const std::string said = path("said here.txt"), log = path("t.log");
  files_.write(said, "of an earlier run, and longer than what comes");
  const auto program = start(machine_->writer(file_, 0), said);
  waitFor(*program);
  EXPECT_THAT(files_.read(said), Optional(std::string("saidwhy")));

  // A batch line that redirects its output keeps it.
  const std::string command = machine_->writer(file_, 0);
  files_.write(path("t.bat"), "@echo off\r\n" + command + " >" + log + "\r\n" + command + "\r\n");
  const auto batch = start(path("t.bat"), said);
  waitFor(*batch);
  EXPECT_THAT(files_.read(log), Optional(std::string("said")));
  EXPECT_THAT(files_.read(said), Optional(std::string("whysaidwhy")));
  EXPECT_THAT(batch->exitCode(), Optional(kWriterCode));

  EXPECT_TRUE(start(command, path("no folder\\said.txt")));
}

TEST_F(ProcessContract, TheProgramGivenRunsWhateverTheLineBeginsWith) {
  StartRequest request;
  request.commandLine = path("missing.exe") + " /c exit 5";
  request.program = platform_.environment.variable("ComSpec");
  const auto program = platform_.processes.start(request);
  ASSERT_TRUE(program);
  waitFor(*program);
  EXPECT_THAT(program->exitCode(), Optional(5u));
  request.program = path("missing.exe");
  EXPECT_FALSE(platform_.processes.start(request));
}

TEST_F(ProcessContract, WhatCannotBeStartedIsNull) {
  files_.write(path("plain.txt"), "no program");
  for (const std::string& command :
       {path("missing.exe") + " a", "\"" + path("missing file.exe") + "\" a",
        path("missing.bat")}) {
    EXPECT_FALSE(start(command)) << command;
  }
}

using EnvironmentContract = Contract;

TEST_F(EnvironmentContract, TheProgramKnowsItselfAndItsLocale) {
  Environment& environment = platform_.environment;
  EXPECT_EQ(environment.variable("WinDir"), environment.variable("windir"));
  EXPECT_TRUE(files_.isFolder(environment.variable("windir") + "\\System32"));
  EXPECT_EQ(environment.variable("NoSuchVariableAtAll"), "");
  environment.setVariable("AVariable", "a \u00E4%");
  EXPECT_EQ(environment.variable("avariable"), "a \u00E4%");
  ASSERT_FALSE(environment.arguments().empty());
  EXPECT_TRUE(files_.isFolder(environment.programFolder()));
  EXPECT_NE(environment.programFolder().back(), '\\');
  environment.setThreadLocale(1031);
  EXPECT_EQ(environment.threadLocale(), 1031u);
  EXPECT_NE(environment.systemLocale(), 0u);
  EXPECT_FALSE(environment.fontExists("No Such Font At All") || environment.fontExists(""));
  EXPECT_GE(environment.now().year, 2024);
  environment.reseedRandom();
  for (int i = 0; i < 100; ++i) {
    const double number = environment.random();
    EXPECT_TRUE(number >= 0 && number < 1) << number;
  }
}

using DrivesContract = Contract;

TEST_F(DrivesContract, ALetterTellsItsVolume) {
  Drives& drives = platform_.drives;
  const std::string system = platform_.environment.variable("windir").substr(0, 2);
  EXPECT_EQ(drives.type(system), kDriveFixed);
  EXPECT_EQ(drives.type(LowerAscii(system)), kDriveFixed);
  EXPECT_GT(drives.freeBytes(system).value_or(0), 0u);
  EXPECT_EQ(drives.type("Q:"), kDriveNoRoot);
  EXPECT_FALSE(drives.freeBytes("Q:") || drives.position("Q:"));
  EXPECT_EQ(drives.facts("Q:"), VolumeFacts());
  EXPECT_FALSE(drives.assignLetter({99, 99}, "Q:") || drives.removeLetter("Q:"));

  std::vector<VolumeFacts> all;
  for (std::string drive = "C:"; drive != "Q:"; ++drive[0]) {
    if (drives.type(drive) != kDriveFixed) continue;
    const VolumeFacts facts = drives.facts(drive);
    EXPECT_THAT(facts.name, AllOf(StartsWith("\\\\?\\Volume{"), ::testing::EndsWith("}\\")))
        << drive;
    EXPECT_EQ(facts, drives.facts(LowerAscii(drive))) << drive;
    EXPECT_THAT(all, Not(::testing::Contains(facts))) << drive;
    EXPECT_TRUE(files_.accessible(drive + "\\")) << drive;  // also an empty one
    all.push_back(facts);
  }
  EXPECT_FALSE(all.empty());
}

using WindowsContract = Contract;

TEST_F(WindowsContract, AProgramsWindowsAreFoundByClassAndTitle) {
  ForeignWindows& windows = platform_.windows;
  const auto before = windows.listByClass("static");
  const ForeignWindow first = machine_->openWindow("Static", "first of these"),
                      second = machine_->openWindow("Static", "second of these");
  auto after = windows.listByClass("static");
  for (ForeignWindow old : before) std::erase(after, old);
  EXPECT_THAT(after, UnorderedElementsAre(first, second));
  EXPECT_EQ(windows.findByTitle("Second of these"), second);
  EXPECT_EQ(windows.title(first), "first of these");
  EXPECT_TRUE(windows.exists(first));
  EXPECT_NE(windows.processOf(first), 0u);
  EXPECT_EQ(windows.processOf(first), windows.processOf(second));
  EXPECT_FALSE(windows.exists(0) || windows.processOf(0) != 0);
  EXPECT_THAT(windows.listByClass("No such class at all"), IsEmpty());
}

}  // namespace pavoline::testing
