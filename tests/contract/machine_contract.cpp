#include <gmock/gmock.h>

#include <algorithm>

#include "contract/contract_test.h"
#include "platform/text.h"

namespace pavoline::testing {

using namespace ::testing;

constexpr std::chrono::seconds kLong(60);

class ProcessContract : public Contract {
 protected:
  std::unique_ptr<StartedProgram> start(const std::string& commandLine,
                                        const std::string& outputFile = {}) {
    StartRequest request;
    request.commandLine = commandLine;
    request.outputFile = outputFile;
    return platform_.processes.start(request);
  }
  void waitFor(StartedProgram& program) {
    while (program.running()) program.waitHandlingEvents(kLong);
  }
  // Other programs than this test's own.
  std::vector<RunningProcess> writers() {
    auto result = platform_.processes.list();
    std::erase_if(result, [&](const RunningProcess& process) {
      return LowerAscii(process.imageName) != kWriterImage ||
             std::ranges::count(before_, process.id, &RunningProcess::id) > 0;
    });
    return result;
  }

  std::string file_ = path("a file.txt");
  std::vector<RunningProcess> before_ = platform_.processes.list();
};

TEST_F(ProcessContract, AProgramRunsUntilItHasDoneItsWork) {
  EXPECT_FALSE(before_.empty());
  const auto program = start(machine_->writer(file_, 1500));
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
  program->waitHandlingEvents(kLong);  // returns at once
}

TEST_F(ProcessContract, AnEndIsToldOnceToWhoeverStillHoldsTheProgram) {
  std::vector<std::string> told;
  auto held = start(machine_->writer(file_, 300)),
       dropped = start(machine_->writer(path("dropped"), 200));
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

TEST_F(ProcessContract, ATerminatedProgramIsGone) {
  const auto program = start(machine_->writer(file_, 20000));
  ASSERT_TRUE(program);
  platform_.processes.terminate(program->id());
  waitFor(*program);
  EXPECT_THAT(program->exitCode(), Optional(1u));
  EXPECT_TRUE(writers().empty());
  EXPECT_NE(files_.read(file_), "beginend");
  platform_.processes.terminate(0xFFFFFFF0);  // nobody's: ignored
}

TEST_F(ProcessContract, ABatchFileEndsWithItsProgram) {
  platform_.environment.setVariable("AVariable", "x");
  const std::string line = machine_->writer(path("100%% %AVariable%"), 1500);
  files_.write(path("t.bat"), line + " >" + path("t.log") + "\r\n");
  const auto program = start(path("t.bat"), path("said"));
  ASSERT_TRUE(program);
  while (program->running() && !files_.read(path("said")).value_or("").ends_with("why")) {
    platform_.processes.handleEvents();
  }
  EXPECT_EQ(files_.read(path("100% x")), "begin");
  ASSERT_EQ(writers().size(), 1u);
  platform_.processes.terminate(writers()[0].id);
  waitFor(*program);
  EXPECT_THAT(program->exitCode(), Optional(1u));
  EXPECT_THAT(files_.read(path("t.log")), Optional(std::string("said")));
  EXPECT_THAT(files_.read(path("said")), Optional(::testing::EndsWith("why")));
}

TEST_F(ProcessContract, WhatAProgramSaysLandsInTheFileGivenForIt) {
  const std::string said = path("said here.txt"), command = machine_->writer(file_, 0);
  files_.write(said, "of an earlier run, and longer than what comes");
  const auto program = start(command, said);
  waitFor(*program);
  EXPECT_THAT(files_.read(said), Optional(std::string("saidwhy")));
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
  for (const std::string name : {"missing.exe", "missing file.exe", "missing.bat"}) {
    EXPECT_FALSE(start("\"" + path(name) + "\" a")) << name;
  }
}

using EnvironmentContract = Contract;

TEST_F(EnvironmentContract, TheMachineIsNamedAsFilesCanBe) {
  const std::string address = platform_.environment.networkAddress();
  EXPECT_EQ(address.find_first_not_of("0123456789ABCDEF"), std::string::npos) << address;
  EXPECT_TRUE(address.empty() || address.size() == 12) << address;
  const std::string table = platform_.environment.firmwareTable();
  EXPECT_TRUE(table.empty() || table.size() > 8);
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
  const auto soon = drives.freeBytesSoon({system, "Q:", system}, 10'000);
  ASSERT_EQ(soon.size(), 3u);
  EXPECT_TRUE(soon[0] && !soon[1] && soon[0] == soon[2]);
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

}  // namespace pavoline::testing
