#include "platform/text.h"

#include <gtest/gtest.h>

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

TEST(Text, IsSplitAndReplacedFromLeftToRight) {
  EXPECT_EQ(Split(",a,,b,", ","), (std::vector<std::string>{"", "a", "", "b", ""}));
  EXPECT_TRUE(Split("", ",").empty());
  EXPECT_EQ(ReplaceAll("a   b", "  ", " "), "a  b");  // what came in is not looked at again
  EXPECT_EQ(ReplaceAll("%bp% %bp%", "%bp%", "<%bp%>"), "<%bp%> <%bp%>");
}

}  // namespace pavoline
