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
  for (const char* part : {"one\r\n", "two"}) EXPECT_TRUE(files_.append(path("log"), part));
  EXPECT_THAT(files_.read(path("log")), Optional(std::string("one\r\ntwo")));
}

TEST_F(FilesContract, AFileTooLargeForOneReadIsReadInParts) {
  ASSERT_TRUE(files_.write(path("huge.log"), std::string(kLargestRead, 'x')));
  EXPECT_TRUE(files_.read(path("huge.log")));
  ASSERT_TRUE(files_.append(path("huge.log"), "y"));
  EXPECT_FALSE(files_.read(path("huge.log")));
  EXPECT_THAT(files_.readPart(path("huge.log"), kLargestRead - 1, 9), Optional(std::string("xy")));
}

TEST_F(FilesContract, NamesMayHoldWhatTheSystemAllowsInAnyCase) {
  for (const auto& [name, same] : {std::pair{"a b&c%d%.txt", "A B&C%D%.txt"},
                                   {"\u00E4\u00F6\u4E0A\u6D77.wim", "\u00C4\u00D6\u4E0A\u6D77.WIM"},
                                   {"it's (1) [x];.x", "IT'S (1) [X];.x"},
                                   {".hidden", ".HIDDEN"}}) {
    EXPECT_TRUE(files_.write(path(name), name));
    EXPECT_THAT(files_.read(path(same)), Optional(std::string(name)));
  }
}

TEST_F(FilesContract, WhatIsNotThereOrIsAFolderFails) {
  EXPECT_TRUE(files_.createFolder(path("folder")) && files_.write(path("file"), "x"));
  EXPECT_FALSE(files_.createFolder(path("folder")) || files_.createFolder(path("no\\deeper")));
  EXPECT_TRUE(files_.isFolder(path("folder")) && files_.exists(path("folder\\")));
  EXPECT_FALSE(files_.isFolder(path("file")) || files_.exists(path("missing")));
  EXPECT_TRUE(files_.accessible(path("folder")));
  EXPECT_FALSE(files_.accessible(path("file")) || files_.accessible(path("missing")));
  EXPECT_TRUE(files_.create(path("new"), "y") && !files_.create(path("file"), "y"));
  EXPECT_FALSE(files_.exists("") || files_.rename(path("missing"), path("file")));
  EXPECT_THAT(files_.read(path("file")), Optional(std::string("x")));

  for (const std::string name : {"missing", "no\\file", "folder"}) {
    SCOPED_TRACE(name);
    EXPECT_FALSE(files_.read(path(name)) || files_.readPart(path(name), 0, 9));
    EXPECT_FALSE(files_.size(path(name)) || files_.copy(path(name), path("copied")));
    EXPECT_FALSE(files_.remove(path(name)) || files_.fileVersion(path(name)) != "");
    if (name == "missing") continue;
    EXPECT_FALSE(files_.write(path(name), "x") || files_.append(path(name), "x") ||
                 files_.create(path(name), "x"));
  }
}

TEST_F(FilesContract, RenamingAndCopyingReplace) {
  for (const bool moved : {false, true}) {
    files_.write(path("a"), "first");
    files_.write(path("b"), "second, longer");
    EXPECT_TRUE(moved ? files_.rename(path("a"), path("b")) : files_.copy(path("a"), path("b")));
    EXPECT_THAT(files_.read(path("b")), Optional(std::string("first")));
    EXPECT_NE(files_.exists(path("a")), moved);
  }
  EXPECT_TRUE(files_.remove(path("b")) && !files_.exists(path("b")));
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
  EXPECT_THAT(names("*"), UnorderedElementsAre(".", "..", "a.wim", "B.WIM", "c.esd", "c1.esd",
                                               "wim", "d.wim.txt", "sub.wim"));
  EXPECT_EQ(names("*.*"), names("*"));
  EXPECT_THAT(names("missing\\*"), IsEmpty());

  int seen = 0;
  files_.list(path("*.wim"), [&](const FileEntry& entry) {
    const bool folder = entry.name == "sub.wim";
    EXPECT_EQ((entry.attributes & kFolderAttribute) != 0, folder);
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

}  // namespace pavoline::testing
