#include <gmock/gmock.h>

#include "contract/contract_test.h"

namespace pavoline::testing {

using namespace ::testing;

class ProfileContract : public Contract {
 protected:
  std::string value(const std::string& key, int bufferBytes = 128) {
    return read("Option", key, bufferBytes);
  }
  std::string read(const std::string& section, const std::string& key, int bufferBytes = 128) {
    return platform_.profile.readSection(ini_, section, bufferBytes).value(key);
  }
  bool set(const std::string& key, const std::string& text) {
    return platform_.profile.write(ini_, "Option", key, text);
  }

  std::string ini_ = path("Pavoline.ini");
};

TEST_F(ProfileContract, ValuesAreFoundByNameWithoutBlanksAndQuotes) {
  files_.write(ini_,
               "; a comment\r\n[Other]\r\nA=other\r\n"
               "[OPTION]\r\n;C=comment\r\nA=first\r\na=second\r\n  B  =  blanks inside  \r\n"
               "Quoted=\" x \"\r\nHalf=\"x\r\nSingle='y'\r\nEmpty=\r\nTwo=a=b\r\n\r\nAfter=gap\r\n"
               "\tTabs\t=\tx\t\r\nBare\r\nBare=second\r\n"
               "[Option]\r\nLate=again\r\n");
  const std::pair<const char*, const char*> cases[] = {
      {"A", "first"}, {"b", "blanks inside"}, {"Quoted", "x"},  {"Half", "\"x"}, {"Single", "y"},
      {"Empty", ""},  {"Two", "a=b"},         {"AFTER", "gap"}, {"C", ""},       {"None", ""},
      {"Tabs", "x"},  {"Bare", ""},           {"Late", ""}};
  for (const auto& [key, expected] : cases) EXPECT_EQ(value(key), expected) << key;
  EXPECT_EQ(read("Missing", "A"), "");
  EXPECT_EQ(platform_.profile.readSection(path("missing.ini"), "Option", 128).value("A"), "");
}

TEST_F(ProfileContract, ValuesAreCutToTheBuffer) {
  const std::string wide = "\u00E9";
  const auto ansiBytes = platform_.text.toAnsi(wide).size();
  std::string accents;
  for (int i = 0; i < 300; ++i) accents += wide;
  files_.write(ini_, "[Option]\r\nLong=" + std::string(300, 'x') +
                         "\r\nAccents=" + platform_.text.toAnsi(accents) + "\r\n");
  for (int limit : {128, 255}) {
    const auto kept = static_cast<std::size_t>(limit - 1);
    EXPECT_EQ(value("Long", limit), std::string(kept, 'x'));
    EXPECT_EQ(value("Accents", limit), accents.substr(0, kept / ansiBytes * wide.size()));
  }
}

TEST_F(ProfileContract, ASectionOfAnySizeIsReadWhole) {
  std::string text = "[Option]\r\n";
  for (int n = 0; n < 4000; ++n)
    text += "Key" + std::to_string(n) + "=" + std::to_string(n) + "\r\n";
  files_.write(ini_, text + "A=b\r\n");
  EXPECT_EQ(value("Key0") + value("Key3999") + value("A"), "03999b");
}

TEST_F(ProfileContract, AFileOfUtf16HoldsWhatTheCodePageLacks) {
  const std::string chinese = "\u4E0A\u6D77";
  files_.write(ini_, "\xFF\xFE" + platform_.text.toUtf16("[Option]\r\nName=" + chinese + "\r\n"));
  EXPECT_TRUE(set("Other", chinese));
  EXPECT_EQ(value("Name") + value("Other"), chinese + chinese);
}

TEST_F(ProfileContract, AWriteKeepsAllElseAndReplacesInPlace) {
  EXPECT_TRUE(set("A", "1"));  // creates file and section
  EXPECT_EQ(value("A"), "1");
  files_.write(ini_, "; mine\r\n[Option]\r\nA=1\r\nB=2\r\n[Other]\r\nA=other\r\n");
  EXPECT_TRUE(set("a", "new") && set("C", "x y"));
  EXPECT_TRUE(platform_.profile.write(ini_, "Third", "A", "3"));
  const std::string text = files_.read(ini_).value_or("");
  EXPECT_THAT(text, StartsWith("; mine\r\n[Option]\r\n"));
  EXPECT_EQ(value("A") + value("B") + value("C"), "new2x y");
  EXPECT_LT(text.find("=new"), text.find("B=2"));
  EXPECT_EQ(read("Other", "A"), "other");
  EXPECT_EQ(read("Third", "A"), "3");
  EXPECT_FALSE(platform_.profile.write(path("no\\folder.ini"), "Option", "A", "1"));
}

}  // namespace pavoline::testing
