#include <gmock/gmock.h>

#include "contract/contract_test.h"

namespace pavoline::testing {

using TextContract = Contract;

TEST_F(TextContract, AnsiKeepsWhatTheCodePageHasAndMarksTheRest) {
  TextServices& text = platform_.text;
  for (const std::string kept : {"", "plain, with \r\n and \t", "x\u00E9y"}) {
    EXPECT_EQ(text.fromAnsi(text.toAnsi(kept)), kept);
    EXPECT_EQ(text.fromConsole(text.toConsole(kept)), kept);
  }
  // No ANSI code page but UTF-8 itself has these.
  const std::string rare = "a\u10D0\U0001F600b";
  for (const std::string& bytes : {text.toAnsi(rare), text.toConsole(rare)}) {
    EXPECT_TRUE(bytes == rare || bytes == "a??b" || bytes == "a???b") << bytes;
  }
}

TEST_F(TextContract, Utf16IsReadWithItsFaults) {
  const std::pair<std::string, std::string> cases[] = {
      {std::string("a\0\x0A\x4E\0", 5), "a\u4E0A"},                   // odd last byte
      {std::string("\x3D\xD8\x00\xDE", 4), "\U0001F600"},             // a pair
      {std::string("\x3D\xD8x\0", 4), "\uFFFDx"},                     // its first half alone
      {std::string("x\0\x00\xDE", 4), "x\uFFFD"},                     // its second half alone
      {std::string("\0\0\x3D\xD8", 4), std::string("\0\uFFFD", 4)}};  // cut, behind a zero
  for (const auto& [bytes, expected] : cases) {
    EXPECT_EQ(platform_.text.fromUtf16(bytes), expected);
  }
  const std::string all = "a\u00E9\u4E0A\U0001F600";
  EXPECT_EQ(platform_.text.fromUtf16(platform_.text.toUtf16(all)), all);
}

}  // namespace pavoline::testing
