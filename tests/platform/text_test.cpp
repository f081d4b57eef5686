#include "platform/text.h"

#include <gtest/gtest.h>

namespace pavoline {

TEST(Text, NumbersAreReadFromTheFrontAsFarAsTheyGo) {
  const std::tuple<std::string, double, int, bool> cases[] = {
      {"", 0, 0, false},
      {"33", 33, 33, true},
      {"6.1.7601", 6.1, 6, false},
      {".5", 0.5, 0, true},
      {"-7.9", -7.9, -7, true},
      {"\u0663", 0, 0, false},
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

}  // namespace pavoline
