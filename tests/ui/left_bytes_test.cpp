#include "ui/left_bytes.h"

#include <gtest/gtest.h>

#include "support/fake_text.h"

namespace pavoline::testing {
namespace {

TEST(LeftBytes, CutsByBytesOfTheCodePage) {
  FakeTextServices gbk;
  gbk.codePage = "CP936";
  const struct {
    std::string text;
    int bytes;
    CutMode mode;
    std::string expected;  // in bytes of the code page
  } cases[] = {
      {"abc", 5, CutMode::kSplit, "abc"},
      {"abcdef", 6, CutMode::kSplit, "abcdef"},
      {"abcdef", 3, CutMode::kTakeWhole, "abc"},
      {"", 0, CutMode::kLeaveOut, ""},
      {"中文名", 4, CutMode::kSplit, "\xD6\xD0\xCE\xC4"},
      {"中文名", 4, CutMode::kLeaveOut, "\xD6\xD0\xCE\xC4"},
      {"中文名", 5, CutMode::kLeaveOut, "\xD6\xD0\xCE\xC4"},
      {"中文名", 5, CutMode::kTakeWhole, "\xD6\xD0\xCE\xC4\xC3\xFB"},
      {"a中文", 2, CutMode::kLeaveOut, "a"},
      {"a中文", 2, CutMode::kTakeWhole, "a\xD6\xD0"},
      {"a中文", 3, CutMode::kTakeWhole, "a\xD6\xD0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(gbk.toAnsi(LeftBytes(gbk, c.text, c.bytes, c.mode)), c.expected)
        << c.text << ' ' << c.bytes << ' ' << static_cast<int>(c.mode);
  }
  // A split character leaves half of one behind; what is in front of it stays whole.
  const std::string split = LeftBytes(gbk, "中文名", 5, CutMode::kSplit);
  EXPECT_TRUE(split.starts_with("中文"));
  EXPECT_FALSE(split.ends_with("名"));
}

}  // namespace
}  // namespace pavoline::testing
