#include "run/command_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "run/mid_between.h"
#include "support/workshop.h"

namespace pavoline::testing {

using ::testing::ElementsAre;

const std::string kTemp = "C:\\Windows\\temp\\";

TEST(CommandRunner, BatchRedirectsItsLastLineAndLeavesTheLogOnly) {
  Workshop w;
  w.processes.onStart("tool", [](ToolRun& run) {
    run.print(100, "output of " + run.line.substr(0, 5));
    run.endsAt(2000);
  });
  w.text.consoleCodePage = "CP437";
  RunBatch(w.session, "tool1\r\ntool2 \xC3\xA9", "job");
  EXPECT_EQ(w.processes.started.at(0).mode, ShowMode::kHidden);
  EXPECT_EQ(w.processes.started.at(0).script, "tool1\r\ntool2 \x82 >" + kTemp + "job.log\r\n");
  EXPECT_EQ(w.files.text(kTemp + "job.log"), "output of tool2");
  EXPECT_FALSE(w.files.exists(kTemp + "job.bat"));
  EXPECT_EQ(w.time.now(), 4000);
}

TEST(CommandRunner, DiskpartRunsItsScriptInSight) {
  Workshop w;
  RunDiskpart(w.session, "list disk\r\nexit", "vhd");
  const FakeProcesses::Started& run = w.processes.started.at(0);
  EXPECT_EQ(run.command,
            "C:\\Windows\\System32\\cmd.exe /c \"diskpart.exe /S " + kTemp + "vhd.txt\"");
  EXPECT_EQ(run.mode, ShowMode::kNormal);
  EXPECT_EQ(w.files.text(kTemp + "vhd.txt"), "list disk\r\nexit\r\n");
}

TEST(CommandRunner, NoScriptOrLogOfAnEarlierRunIsTakenForThisOne) {
  Workshop w;
  for (const char* name : {"job.bat", "job.log", "job.txt"}) w.files.put(kTemp + name, "stale");
  for (int times = 0; times < 3; ++times) w.files.failNext(FileOperation::kWrite);
  RunBatch(w.session, "tool", "job");
  RunDiskpart(w.session, "list disk", "job");
  EXPECT_FALSE(StartBatch(w.session, "tool", "job"));
  RunBatch(w.session, "tool \xE4\xB8\x8A", "job");  // not in this code page
  EXPECT_TRUE(w.processes.started.empty());
  for (const char* name : {"job.bat", "job.log"}) EXPECT_FALSE(w.files.exists(kTemp + name));
}

TEST(CommandRunner, RedirectionIsOffForTheStartAloneAndOnlyOnNewerSystems) {
  for (const auto& [version, off] : {std::pair{5.1f, false}, {5.2f, true}, {10.0f, true}}) {
    Workshop w;
    w.session.osVersion = version;
    ShellNoWait(w.session, "tool.exe", ShowMode::kHidden);
    EXPECT_EQ(w.processes.started.at(0).redirectionOff, off) << version;
    EXPECT_EQ(w.processes.redirectionOffDepth, 0) << version;
  }
}

TEST(CommandRunner, FindsAndEndsProcessesByName) {
  Workshop w;
  EXPECT_FALSE(IsProcessRunning(w.session, "dism.exe"));
  for (const char* name : {"DISM.EXE", "dism.exe", "dism.exe_x", "dism.com", "adism.exe", "dism"}) {
    w.processes.alreadyRunning(name);
  }
  EXPECT_TRUE(IsProcessRunning(w.session, "dism.exe"));
  KillProcessByName(w.session, "dism.exe");
  EXPECT_THAT(w.processes.killed, ElementsAre("DISM.EXE", "dism.exe", "dism.exe_x"));
}

TEST(CommandRunner, PathsBecomeWordsOfACommand) {
  Workshop w;
  w.files.put("D:\\my images\\100%.wim");
  EXPECT_EQ(ShortPath(w.session, "D:\\my images\\100%.wim"), "\"D:\\MYIMAG~1\\100%.wim\"");
  EXPECT_EQ(BatchPath(w.session, "D:\\my images\\100%.wim"), "\"D:\\MYIMAG~1\\100%%.wim\"");
  EXPECT_EQ(ShortPath(w.session, "D:\\nowhere"), "\"\"");
  EXPECT_EQ(CommandWord("D:\\MYDRIV~1"), "D:\\MYDRIV~1");
  EXPECT_EQ(CommandWord("D:\\a&b\\"), "\"D:\\a&b\\\\\"");
}

TEST(CommandRunner, ReadsUtf16WithoutItsMark) {
  Workshop w;
  // U+4E0A holds the byte 0x0A, before which text mode puts another.
  w.files.put("D:\\x", std::string("\xFF\xFE<\0\x0D\x0A\x4E>\0", 9));
  EXPECT_EQ(ReadUnicodeFile(w.session, "D:\\x"), "<\xE4\xB8\x8A>");
  for (const char* bytes : {"", "\xFF", "\xFF\xFE"}) {
    w.files.put("D:\\x", bytes);
    EXPECT_EQ(ReadUnicodeFile(w.session, "D:\\x"), "");
  }
}

TEST(MidBetween, TakesWhatStandsBetweenTheMarkers) {
  EXPECT_EQ(MidBetween("1 GiB of 3 GiB (33%) done", "(", "%)", false), "33");
  EXPECT_EQ(MidBetween("1 GiB of 3 GiB (33", "(", "%)", false), "");
  EXPECT_EQ(MidBetween("12%) (34%)", "(", "%)", false), "34");
  EXPECT_EQ(MidBetween("<a>1</a><a>2</a>", "<a>", "</a>", true), "1</a><a>2");
  EXPECT_EQ(MidBetween("</a><a>1", "<a>", "</a>", true), "");
}

}  // namespace pavoline::testing
