#include "platform/text.h"

#include <gtest/gtest.h>

#include "platform/paths.h"

namespace pavoline {

TEST(Text, NumbersAreReadFromTheFrontAsFarAsTheyGo) {
  const std::tuple<std::string, double, int, bool> cases[] = {
      {"", 0, 0, false},
      {"33", 33, 33, true},
      {"33 ", 33, 33, false},
      {"12,5", 12, 12, false},
      {"6.1.7601", 6.1, 6, false},
      {".5", 0.5, 0, true},
      {"5.", 5, 5, true},
      {"-", 0, 0, false},
      {"-7.9", -7.9, -7, true},
      {"--7", 0, 0, false},
      {"1e3", 1, 1, false},
      {"\u0663", 0, 0, false},
      {"32767", 32767, 32767, true},
      {"32768", 32768, 0, true},
      {"-32769", -32769, 0, true},
      {"4294967298", 4294967298.0, 0, true}};
  for (const auto& [text, number, integer16, numeric] : cases) {
    EXPECT_DOUBLE_EQ(LeadingNumber(text), number) << text;
    EXPECT_EQ(LeadingInteger16(text), integer16) << text;
    EXPECT_EQ(IsNumeric(text), numeric) << text;
  }
  EXPECT_EQ(LeadingInteger16(std::string(400, '9') + "." + std::string(400, '9')), 0);
}

TEST(Text, IsSplitAtEverySeparator) {
  const std::tuple<std::string, std::string, std::vector<std::string>> cases[] = {
      {"", ",", {}},
      {"a,", ",", {"a", ""}},
      {",a", ",", {"", "a"}},
      {"a,,b", ",", {"a", "", "b"}},
      {"a</IMAGE>b</IMAGE>", "</IMAGE>", {"a", "b", ""}},
      {"aaa", "aa", {"", "a"}}};
  for (const auto& [text, separator, pieces] : cases) EXPECT_EQ(Split(text, separator), pieces);
}

TEST(Text, IsReplacedOnceFromLeftToRight) {
  EXPECT_EQ(ReplaceAll("a   b", "  ", " "), "a  b");  // what came in is not looked at again
  EXPECT_EQ(ReplaceAll("%bp% %bp%", "%bp%", "<%bp%>"), "<%bp%> <%bp%>");
  EXPECT_EQ(Trim(" \ta b\r\n "), "\ta b\r\n");  // blanks only
  EXPECT_EQ(LowerAscii("AZ\u00C4[`"), "az\u00C4[`");
}

TEST(Paths, AreTakenApartAtTheirLastBackslash) {
  const std::tuple<std::string, const char*, const char*, const char*> cases[] = {
      {"D:\\a b\\Install.WIM", "D:\\a b", "Install.WIM", ".wim"},
      {"D:\\", "D:", "", "d:\\"},
      {"", "", "", ""},
      {"1.wim", "", "1.wim", ".wim"},
      {"D:\\x.GHO\\", "D:\\x.GHO", "", "gho\\"}};
  for (const auto& [path, parent, name, lastFour] : cases) {
    EXPECT_EQ(ParentFolder(path), parent) << path;
    EXPECT_EQ(FileName(path), name) << path;
    EXPECT_EQ(LastFourLower(path), lastFour) << path;
  }
  EXPECT_EQ(WithBackslash("D:"), "D:\\");
  EXPECT_EQ(WithBackslash("D:\\"), "D:\\");
}

}  // namespace pavoline
