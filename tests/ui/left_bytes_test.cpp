#include "ui/left_bytes.h"

#include <gtest/gtest.h>

#include "support/fake_text.h"

namespace pavoline::testing {

TEST(LeftBytes, CutsByBytesOfTheCodePage) {
  FakeTextServices gbk;
  gbk.codePage = "CP936";
  // Expected are bytes of the code page.
  const std::tuple<std::string, int, CutMode, std::string> cases[] = {
      {"abc", 5, CutMode::kSplit, "abc"},
      {"abcdef", 3, CutMode::kTakeWhole, "abc"},
      {"", 0, CutMode::kLeaveOut, ""},
      {"中文名", 4, CutMode::kLeaveOut, "\xD6\xD0\xCE\xC4"},
      {"中文名", 5, CutMode::kLeaveOut, "\xD6\xD0\xCE\xC4"},
      {"中文名", 5, CutMode::kTakeWhole, "\xD6\xD0\xCE\xC4\xC3\xFB"},
      {"a中文", 2, CutMode::kLeaveOut, "a"},
      {"a中文", 2, CutMode::kTakeWhole, "a\xD6\xD0"},
      {"a中文", 3, CutMode::kTakeWhole, "a\xD6\xD0"}};
  for (const auto& [text, bytes, mode, expected] : cases) {
    EXPECT_EQ(gbk.toAnsi(LeftBytes(gbk, text, bytes, mode)), expected)
        << text << ' ' << bytes << ' ' << static_cast<int>(mode);
  }
  // A split character leaves half of one behind; what is in front of it stays whole.
  const std::string split = LeftBytes(gbk, "中文名", 5, CutMode::kSplit);
  EXPECT_TRUE(split.starts_with("中文"));
  EXPECT_FALSE(split.ends_with("名"));
}

}  // namespace pavoline::testing
