#include <gmock/gmock.h>

#include <algorithm>

#include "contract/contract_test.h"
#include "platform/text.h"

namespace pavoline::testing {

using namespace ::testing;

class ProcessContract : public Contract {
 protected:
  // Null only when the program did not start.
  std::unique_ptr<StartedProgram> startWriter(int milliseconds) {
    return start(machine_->writer(file_, milliseconds));
  }
  std::unique_ptr<StartedProgram> start(const std::string& commandLine) {
    StartRequest request;
    request.commandLine = commandLine;
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
  const auto program = startWriter(1500);
  ASSERT_TRUE(program);
  EXPECT_EQ(writers().size(), 1u);
  std::string seen;  // the file is read while it is written
  while (program->running() && seen.empty()) {
    platform_.processes.handleEvents();
    seen = files_.read(file_).value_or("");
  }
  EXPECT_EQ(seen, "begin");
  waitFor(*program);
  EXPECT_THAT(files_.read(file_), Optional(std::string("beginend")));
  EXPECT_TRUE(writers().empty());
  program->waitHandlingEvents();  // returns at once
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
  ASSERT_EQ(writers().size(), 1u);
  platform_.processes.terminate(writers()[0].id);
  waitFor(*program);
  EXPECT_TRUE(writers().empty());
  EXPECT_NE(files_.read(file_), "beginend");
  platform_.processes.terminate(0xFFFFFFF0);  // nobody's: ignored
}

TEST_F(ProcessContract, ABatchFileGoesOnWithItsNextLineWhenAProgramIsTerminated) {
  const auto variable = [&](const char* name) { return platform_.environment.variable(name); };
  files_.write(path("t.bat"), "@echo off\r\n" + variable("ComSpec") + " /c exit\r\n" +
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
  EXPECT_THAT(files_.read(path("t.log")), Optional("100% of " + variable("windir") + "\r\n"));
  waitFor(*start(machine_->writer(path("later"), 2000)));
  EXPECT_NE(files_.read(file_), "beginend");  // what it had left to do was not done
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
}

}  // namespace pavoline::testing
