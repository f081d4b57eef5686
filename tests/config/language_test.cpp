#include "config/language.h"

#include <gtest/gtest.h>

#include "support/workshop.h"

namespace pavoline {

using testing::Workshop;

constexpr char kLang[] = "X:\\Pavoline\\Lang\\";

void Ship(Workshop& shop, const std::string& locale, const std::string& text = "") {
  shop.files.put(
      kLang + locale + ".lng",
      "[Option]\r\nfont=Font A,Tahoma\r\n[Language]\r\nString(2)=go " + locale + "\r\n" + text);
}

TEST(Language, FallsBackFromRelatedLocalesToEnglish) {
  using Case = std::tuple<unsigned, std::string, unsigned>;
  for (const auto& [locale, shipped, threadLocale] :
       {Case{1031, "1031", 1031}, Case{3079, "1031", 1031}, Case{3079, "3079", 3079},
        Case{4100, "2052", 2052}, Case{5124, "1028", 1028}, Case{1041, "1033", 1033},
        Case{3079, "1033", 1033}}) {
    Workshop shop;
    shop.environment.thread = locale;
    Ship(shop, shipped);
    LoadLanguage(shop.session);
    EXPECT_EQ(shop.form.command1[kStart].text(), "go " + shipped) << locale;
    EXPECT_EQ(shop.environment.thread, threadLocale) << locale;
  }
}

TEST(Language, ReadsBothTablesCutsLongTextsAndPicksTheFirstFontThere) {
  Workshop shop;
  Ship(shop, "1033",
       "String(40)=" + std::string(300, 'x') + "\r\nCaption(12)= Options \r\nString(115)=no\r\n");
  LoadLanguage(shop.session);
  EXPECT_EQ(shop.session.texts.strings[40], std::string(254, 'x'));
  EXPECT_EQ(shop.form.frame[kOptionsFrame].text(), "Options");
  EXPECT_EQ(shop.session.texts.strings[41], "");
  EXPECT_EQ(shop.form.font(), "Tahoma");
}

TEST(Language, LeavesEveryTextEmptyWithoutAnyFile) {
  Workshop shop;
  LoadLanguage(shop.session);
  EXPECT_EQ(shop.session.texts.strings[2], "");
  EXPECT_EQ(shop.environment.thread, 1033u);
}

TEST(Language, WritesAFileThatLoadsBackTheSame) {
  Workshop shop;
  Ship(shop, "1033");
  LoadLanguage(shop.session);
  shop.session.texts.strings[0] = "\"quoted\"";
  shop.session.texts.strings[3] = "安装 = 100% ; [x]";
  const Texts before = shop.session.texts;
  ASSERT_TRUE(WriteLanguageFile(shop.session, std::string(kLang) + "1033.lng"));
  LoadLanguage(shop.session);
  EXPECT_EQ(shop.session.texts.strings, before.strings);
  EXPECT_EQ(shop.session.texts.captions, before.captions);
  EXPECT_EQ(shop.session.texts.fonts, before.fonts);
}

TEST(Language, LeavesTheOldFileWhenTheNewOneCannotBeWritten) {
  Workshop shop;
  Ship(shop, "1033");
  const std::string path = std::string(kLang) + "1033.lng";
  const std::string before = shop.files.text(path);
  shop.files.failNext(testing::FileOperation::kWrite);
  EXPECT_FALSE(WriteLanguageFile(shop.session, path));
  shop.files.failNext(testing::FileOperation::kRename);
  EXPECT_FALSE(WriteLanguageFile(shop.session, path));
  EXPECT_EQ(shop.files.text(path), before);
  EXPECT_EQ(shop.files.below("X:\\Pavoline\\Lang").size(), 1u) << "no draft is left";
}

}  // namespace pavoline
