#include <gmock/gmock.h>

#include "contract/contract_test.h"
#include "platform/text.h"

namespace pavoline::testing {

using namespace ::testing;

using FilesContract = Contract;

TEST_F(FilesContract, BytesComeBackAsTheyWereWritten) {
  const std::string every = std::string("\0\r\n\n\x1A\xFF\xFE", 7) + std::string(70000, 'x');
  for (const std::string& bytes : {every, std::string("short"), std::string()}) {
    EXPECT_TRUE(files_.write(path("a.bin"), bytes));  // over the longer one before it
    EXPECT_THAT(files_.read(path("a.bin")), Optional(bytes));
    EXPECT_THAT(files_.size(path("a.bin")), Optional(bytes.size()));
    std::string parts;
    for (std::string part = "x"; !part.empty(); parts += part) {
      part = files_.readPart(path("a.bin"), parts.size(), 30000).value_or("unreadable");
      EXPECT_LE(part.size(), 30000u);
    }
    EXPECT_EQ(parts, bytes);
    EXPECT_THAT(files_.readPart(path("a.bin"), 5ull << 32, 10), Optional(std::string()));
  }
  for (const char* line : {"one\r\n", "two\r\n"}) EXPECT_TRUE(files_.append(path("log"), line));
  EXPECT_THAT(files_.read(path("log")), Optional(std::string("one\r\ntwo\r\n")));
}

TEST_F(FilesContract, AFileTooLargeForOneReadIsReadInParts) {
  ASSERT_TRUE(files_.write(path("huge.log"), std::string(kLargestRead, 'x')));
  EXPECT_TRUE(files_.read(path("huge.log")));
  ASSERT_TRUE(files_.append(path("huge.log"), "y"));
  EXPECT_FALSE(files_.read(path("huge.log")));
  EXPECT_THAT(files_.readPart(path("huge.log"), kLargestRead - 1, 9), Optional(std::string("xy")));
}

TEST_F(FilesContract, NamesMayHoldWhatTheSystemAllows) {
  for (const std::string name : {"a b&c%d%.txt", "\u00E4\u00F6\u4E0A\u6D77.wim", "it's (1) [x];.x",
                                 "UPPER.TXT", ".hidden"}) {
    EXPECT_TRUE(files_.write(path(name), name));
    EXPECT_THAT(files_.read(path(name)), Optional(name));
  }
  EXPECT_THAT(files_.read(path("upper.txt")), Optional(std::string("UPPER.TXT")));
  EXPECT_THAT(files_.read(path("\u00C4\u00D6\u4E0A\u6D77.WIM")),
              Optional(std::string("\u00E4\u00F6\u4E0A\u6D77.wim")));
}

TEST_F(FilesContract, WhatIsNotThereOrIsAFolderFails) {
  EXPECT_TRUE(files_.createFolder(path("folder")));
  EXPECT_FALSE(files_.createFolder(path("folder")) || files_.createFolder(path("no\\deeper")));
  EXPECT_TRUE(files_.isFolder(path("folder")) && files_.exists(path("folder\\")));
  EXPECT_TRUE(files_.write(path("file"), "x"));
  EXPECT_FALSE(files_.isFolder(path("file")) || files_.accessible(path("file")));
  EXPECT_TRUE(files_.accessible(path("folder")) && !files_.accessible(path("missing")));
  for (const char* there : {"folder", "file"}) EXPECT_FALSE(files_.create(path(there), "y"));
  EXPECT_THAT(files_.read(path("file")), Optional(std::string("x")));
  EXPECT_TRUE(files_.create(path("new"), "y"));
  EXPECT_THAT(files_.read(path("new")), Optional(std::string("y")));

  for (const std::string name : {"missing", "no\\file", "folder"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(files_.read(path(name)), std::nullopt);
    EXPECT_EQ(files_.readPart(path(name), 0, 9), std::nullopt);
    EXPECT_EQ(files_.size(path(name)), std::nullopt);
    EXPECT_FALSE(files_.remove(path(name)) || files_.copy(path(name), path("copied")));
    EXPECT_EQ(files_.fileVersion(path(name)), "");
    if (name == "missing") continue;
    EXPECT_FALSE(files_.write(path(name), "x") || files_.append(path(name), "x") ||
                 files_.create(path(name), "x"));
  }
  EXPECT_FALSE(files_.exists(path("missing")) || files_.exists(""));
  EXPECT_FALSE(files_.rename(path("missing"), path("file")));
  EXPECT_TRUE(files_.exists(path("file")));
}

TEST_F(FilesContract, RenamingAndCopyingReplace) {
  files_.write(path("a"), "first");
  files_.write(path("b"), "second, longer");
  EXPECT_TRUE(files_.copy(path("a"), path("b")));
  EXPECT_THAT(files_.read(path("b")), Optional(std::string("first")));
  files_.write(path("c"), "third");
  EXPECT_TRUE(files_.rename(path("c"), path("b")));
  EXPECT_FALSE(files_.exists(path("c")));
  EXPECT_THAT(files_.read(path("b")), Optional(std::string("third")));
  EXPECT_TRUE(files_.remove(path("b")) && !files_.exists(path("b")));
}

TEST_F(FilesContract, ACopyTellsItsProgressAndCanBeCancelled) {
  const std::string bytes(3 << 20, 'w');
  files_.write(path("big.wim"), bytes);
  std::uint64_t last = 0;
  int calls = 0;
  EXPECT_TRUE(files_.copyWithProgress(path("big.wim"), path("copy.wim"),
                                      [&](std::uint64_t done, std::uint64_t total) {
                                        EXPECT_GE(done, last);
                                        EXPECT_EQ(total, bytes.size());
                                        last = done;
                                        ++calls;
                                        return true;
                                      }));
  EXPECT_EQ(files_.read(path("copy.wim")), bytes);
  if (calls == 0) GTEST_SKIP() << "This system copies without telling its progress (Wine 8 does)";
  EXPECT_EQ(last, bytes.size());

  EXPECT_FALSE(files_.copyWithProgress(path("big.wim"), path("half.wim"),
                                       [](std::uint64_t, std::uint64_t) { return false; }));
  EXPECT_FALSE(files_.exists(path("half.wim")));
}

TEST_F(FilesContract, AListingTellsWhatThePatternCoversUntilItIsStopped) {
  files_.createFolder(path("sub.wim"));
  for (const char* name : {"a.wim", "B.WIM", "c.esd", "c1.esd", "wim", "d.wim.txt"}) {
    files_.write(path(name), "12345");
  }
  const auto names = [&](const std::string& pattern) {
    std::vector<std::string> result;
    files_.list(path(pattern), [&](const FileEntry& entry) {
      result.push_back(entry.name);
      return true;
    });
    return result;
  };
  EXPECT_THAT(names("*.wim"), UnorderedElementsAre("a.wim", "B.WIM", "sub.wim"));
  EXPECT_THAT(names("C?.ESD"), ElementsAre("c1.esd"));
  EXPECT_THAT(names("c.esd"), ElementsAre("c.esd"));
  EXPECT_THAT(names("*"), UnorderedElementsAre(".", "..", "a.wim", "B.WIM", "c.esd", "c1.esd",
                                               "wim", "d.wim.txt", "sub.wim"));
  EXPECT_EQ(names("*.*"), names("*"));
  for (const char* none : {"none*", "missing\\*"}) EXPECT_THAT(names(none), IsEmpty());

  int seen = 0;
  files_.list(path("*.wim"), [&](const FileEntry& entry) {
    const bool folder = entry.name == "sub.wim";
    EXPECT_EQ((entry.attributes & kFolderAttribute) != 0, folder);
    EXPECT_EQ(entry.attributes & kReparsePointAttribute, 0u);
    EXPECT_TRUE(folder || entry.size == 5u);
    EXPECT_THAT(entry.modified, MatchesRegex("20..-..-.. ..:.."));
    return ++seen < 2;
  });
  EXPECT_EQ(seen, 2);
}

TEST_F(FilesContract, AShortPathLeadsToTheSameFile) {
  files_.createFolder(path("A folder with blanks"));
  for (const std::string name : {"plain.wim", "A folder with blanks\\a long image name.wim"}) {
    files_.write(path(name), name);
    const std::string shortened = files_.shortPath(path(name));
    EXPECT_THAT(files_.read(shortened), Optional(name)) << shortened;
    EXPECT_FALSE(Contains(shortened, " ") || Contains(shortened, "\"")) << shortened;
  }
  EXPECT_EQ(files_.shortPath(path("missing file.wim")), "");
  EXPECT_EQ(files_.shortPath("\\\\.\\no such path\\x"), "");
}

TEST_F(FilesContract, PathsMayBeLongerThanTheOldLimit) {
  std::string deep = folder_;
  for (int i = 0; i < 4; ++i) {
    deep += "\\" + std::string(90, static_cast<char>('a' + i));
    ASSERT_TRUE(files_.createFolder(deep));
  }
  const std::string file = deep + "\\install.wim";
  EXPECT_TRUE(files_.write(file, "deep"));
  const std::string shortened = files_.shortPath(file);
  EXPECT_THAT(files_.read(shortened), Optional(std::string("deep"))) << shortened;
  EXPECT_TRUE(shortened.starts_with(folder_.substr(0, 3))) << shortened;
}

TEST_F(FilesContract, RelativePathsLieInTheCurrentFolder) {
  files_.createFolder(path("here"));
  EXPECT_FALSE(files_.setCurrentFolder(path("missing")));
  ASSERT_TRUE(files_.setCurrentFolder(path("here")));
  EXPECT_TRUE(files_.write(".\\a.xml", "x"));
  EXPECT_TRUE(files_.exists(path("here\\a.xml")) && files_.exists("..\\here"));
  for (const char* same : {"a.xml", ".\\A\\..\\a.xml", "..\\here\\a.xml", "../here/a.xml"}) {
    EXPECT_EQ(files_.fullPath(same), path("here\\a.xml")) << same;
  }
  EXPECT_EQ(files_.fullPath(".."), folder_);
  EXPECT_EQ(files_.fullPath("missing\\"), path("here\\missing\\"));
  for (const char* root : {"C:\\", "c:\\..\\..\\a\\.."}) {
    EXPECT_EQ(platform_.text.upper(files_.fullPath(root)), "C:\\") << root;
  }
  EXPECT_EQ(files_.fullPath(""), "");
  EXPECT_TRUE(files_.setCurrentFolder(platform_.environment.variable("windir")));
}

TEST_F(FilesContract, ATreeIsDeletedWithAllItHolds) {
  constexpr unsigned kSilentNoQuestion = 0x414;
  files_.createFolder(path("tree"));
  files_.createFolder(path("tree\\sub folder"));
  files_.write(path("tree\\sub folder\\a.txt"), "x");
  files_.write(path("other"), "x");
  for (const char* name : {"tree", "other"}) {
    EXPECT_TRUE(files_.deleteTree(path(name), kSilentNoQuestion));
    EXPECT_FALSE(files_.exists(path(name)));
  }
  EXPECT_FALSE(files_.deleteTree(path("tree"), kSilentNoQuestion));
}

TEST_F(FilesContract, TheSystemsOwnFilesHaveAVersion) {
  const std::string windows = platform_.environment.variable("windir");
  const auto fields = Split(files_.fileVersion(windows + "\\System32\\kernel32.dll"), ".");
  EXPECT_EQ(fields.size(), 4u);
  EXPECT_THAT(fields, Each(ResultOf(IsNumeric, true)));
  files_.write(path("plain.exe"), "no program");
  EXPECT_EQ(files_.fileVersion(path("plain.exe")), "");
}

}  // namespace pavoline::testing
