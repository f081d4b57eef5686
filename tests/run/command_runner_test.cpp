#include "run/command_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "run/command_words.h"
#include "run/tool_files.h"
#include "support/workshop.h"

namespace pavoline::testing {

using namespace ::testing;

const std::string kTemp = "C:\\Windows\\temp\\";

struct CommandRunner : Test, Workshop {
  std::string journal() { return files.text(kTemp + "Pavoline.log"); }
};

TEST_F(CommandRunner, BatchLeavesItsLogAndTellsHowItEnded) {
  processes.onStart("tool", [](ToolRun& run) {
    run.print(100, "output");
    run.complain(200, "one\r\n\r\ncannot read\r\n");
    run.endsAt(2000);
    run.exits(3);
  });
  text.consoleCodePage = "CP437";
  const ToolEnd end = RunBatch(session, "tool \xC3\xA9", "job");
  EXPECT_EQ(processes.started.at(0).mode, ShowMode::kHidden);
  EXPECT_EQ(processes.started[0].script, "tool \x82 >" + kTemp + "job.log\r\n");
  EXPECT_EQ(files.text(kTemp + "job.log"), "output");
  EXPECT_THAT(files.below(kTemp), ElementsAre(EndsWith("job.log"), EndsWith("pavoline.log")));
  EXPECT_EQ(end.exitCode, 3u);
  EXPECT_EQ(end.lastWords, "one\ncannot read");
  EXPECT_THAT(journal(), HasSubstr("ended after 2000 ms, exit code 3: one cannot read\r\n"));
}

TEST_F(CommandRunner, OnlyAnUnattendedRunGivesAHungToolUp) {
  processes.onStart("tool", [](ToolRun& run) { run.neverEnds(); });
  session.commandLine.install = true;
  EXPECT_FALSE(RunBatch(session, "tool", "job").exitCode);
  EXPECT_THAT(processes.killed, ElementsAre("cmd.exe"));
  EXPECT_GE(time.now(), 3600 * 1000);

  session.commandLine.install = false;
  time.after(5 * 3600 * 1000, [this] { form.unload(); });
  RunBatch(session, "tool", "job");
  EXPECT_EQ(processes.killed.size(), 1u);
}

TEST_F(CommandRunner, NoScriptOrLogOfAnotherRunIsTakenForThisOne) {
  const auto runAll = [this] {
    for (const char* name : {"job.bat", "job.log", "job.txt"}) files.put(kTemp + name, "stale");
    RunBatch(session, "tool", "job");
    RunDiskpart(session, "list disk", "job");
    EXPECT_FALSE(StartBatch(session, "tool", {"job", "tool.exe", ""}));
    EXPECT_TRUE(processes.started.empty());
  };
  for (int times = 0; times < 3; ++times) files.failNext(FileOperation::kWrite);
  runAll();
  RunBatch(session, "tool \xE4\xB8\x8A", "job");  // not in this code page
  for (const char* name : {"job.bat", "job.log"}) EXPECT_FALSE(files.exists(kTemp + name));
  files.stuck = {kTemp + "job.bat", kTemp + "job.txt"};
  runAll();
  files.put(kTemp + "job.log", "stale");
  files.stuck = {kTemp + "job.log"};
  RunBatch(session, "tool", "job");
  EXPECT_TRUE(processes.started.empty());
}

TEST_F(CommandRunner, WhatABatchFileCannotHoldGoesToTheInterpreterItself) {
  EXPECT_TRUE(StartBatch(session, "tool \"D:\\100%% \xE4\xB8\x8A\" >x", {"job", "tool.exe", ""}));
  EXPECT_EQ(processes.started.at(0).command,
            "C:\\Windows\\System32\\cmd.exe /s /c \"tool \"D:\\100\"%\" \xE4\xB8\x8A\" >x\"");
  EXPECT_FALSE(files.exists(kTemp + "job.bat"));
}

TEST_F(CommandRunner, ABareNameIsAProgramOfTheSystemAsTheToolsSeeIt) {
  for (const auto& [version, own] : {std::pair{5.1f, false}, {5.2f, true}, {10.0f, true}}) {
    session.osVersion = version;
    ShellNoWait(session, "shutdown.exe -a", ShowMode::kHidden);
    EXPECT_EQ(processes.started.back().program, "C:\\Windows\\System32\\shutdown.exe");
    EXPECT_EQ(processes.started.back().fromOwnSystem32, own) << version;
  }
  files.put("X:\\Pavoline\\other.exe");  // the current folder's
  EXPECT_FALSE(ShellNoWait(session, "other.exe", ShowMode::kHidden));
  EXPECT_TRUE(ShellNoWait(session, "\"X:\\Pavoline\\other.exe\" -a", ShowMode::kHidden));
  EXPECT_EQ(processes.started.back().program, "");
}

TEST_F(CommandRunner, ReadsUtf16WithoutItsMark) {
  // U+4E0A holds the byte 0x0A, before which text mode puts another.
  files.put("D:\\x", std::string("\xFF\xFE<\0\x0D\x0A\x4E>\0", 9));
  EXPECT_EQ(ReadUnicodeFile(session, "D:\\x"), "<\xE4\xB8\x8A>");
  for (const char* bytes : {"", "\xFF", "\xFF\xFE", "\r\n"}) {
    files.put("D:\\x", bytes);
    EXPECT_EQ(ReadUnicodeFile(session, "D:\\x"), "");
  }
}

}  // namespace pavoline::testing
