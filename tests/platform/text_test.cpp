#include "platform/text.h"

#include <gmock/gmock.h>

#include "platform/paths.h"

namespace pavoline {
namespace {

using ::testing::ElementsAreArray;

TEST(Text, NumbersAreReadFromTheFrontAsFarAsTheyGo) {
  const struct {
    std::string text;
    double number;
    int integer16;
    bool numeric;
  } cases[] = {
      {"", 0, 0, false},
      {"33", 33, 33, true},
      {"  33", 33, 33, false},
      {"33 ", 33, 33, false},
      {"12,5", 12, 12, false},
      {"6.1.7601", 6.1, 6, false},
      {"10.0", 10, 10, true},
      {".5", 0.5, 0, true},
      {"5.", 5, 5, true},
      {".", 0, 0, false},
      {"-", 0, 0, false},
      {"-7.9", -7.9, -7, true},
      {"+7", 7, 7, true},
      {"--7", 0, 0, false},
      {"- 7", 0, 0, false},
      {"x7", 0, 0, false},
      {"1e3", 1, 1, false},
      {"\u0663", 0, 0, false},
      {"32767", 32767, 32767, true},
      {"32768", 32768, 0, true},
      {"-32768", -32768, -32768, true},
      {"-32769", -32769, 0, true},
      {"4294967298", 4294967298.0, 0, true},
  };
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(LeadingNumber(c.text), c.number) << c.text;
    EXPECT_EQ(LeadingInteger16(c.text), c.integer16) << c.text;
    EXPECT_EQ(IsNumeric(c.text), c.numeric) << c.text;
  }
  EXPECT_EQ(LeadingInteger16(std::string(400, '9') + "." + std::string(400, '9')), 0);
}

TEST(Text, IsSplitAtEverySeparator) {
  const struct {
    std::string text, separator;
    std::vector<std::string> pieces;
  } cases[] = {
      {"", ",", {}},
      {"a", ",", {"a"}},
      {"a,", ",", {"a", ""}},
      {",a", ",", {"", "a"}},
      {"a,,b", ",", {"a", "", "b"}},
      {"a\r\nb\nc", "\r\n", {"a", "b\nc"}},
      {"a</IMAGE>b</IMAGE>", "</IMAGE>", {"a", "b", ""}},
      {"aaa", "aa", {"", "a"}},
  };
  for (const auto& c : cases) EXPECT_THAT(Split(c.text, c.separator), ElementsAreArray(c.pieces));
}

TEST(Text, IsReplacedOnceFromLeftToRight) {
  EXPECT_EQ(ReplaceAll("a   b", "  ", " "), "a  b");  // what came in is not looked at again
  EXPECT_EQ(ReplaceAll("%bp% %bp%", "%bp%", "<%bp%>"), "<%bp%> <%bp%>");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(Trim(" \ta b\r\n "), "\ta b\r\n");  // blanks only
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(LowerAscii("AZ\u00C4[`"), "az\u00C4[`");
}

TEST(Paths, AreTakenApartAtTheirLastBackslash) {
  const struct {
    std::string path, parent, name, lastFour;
  } cases[] = {
      {"D:\\a b\\Install.WIM", "D:\\a b", "Install.WIM", ".wim"},
      {"D:\\", "D:", "", "d:\\"},
      {"D:", "", "D:", "d:"},
      {"", "", "", ""},
      {".wim", "", ".wim", ".wim"},
      {"1.wim", "", "1.wim", ".wim"},
      {"D:\\x.GHO\\", "D:\\x.GHO", "", "gho\\"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ParentFolder(c.path), c.parent) << c.path;
    EXPECT_EQ(FileName(c.path), c.name) << c.path;
    EXPECT_EQ(LastFourLower(c.path), c.lastFour) << c.path;
  }
  EXPECT_EQ(WithBackslash("D:"), "D:\\");
  EXPECT_EQ(WithBackslash("D:\\"), "D:\\");
}

}  // namespace
}  // namespace pavoline
