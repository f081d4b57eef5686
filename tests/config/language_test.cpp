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
       {Case{3079, "1031", 1031}, Case{3079, "3079", 3079}, Case{4100, "2052", 2052},
        Case{5124, "1028", 1028}, Case{1041, "1033", 1033}, Case{3079, "1033", 1033}}) {
    Workshop shop;
    shop.session.language = shop.environment.setThreadLocale(locale);
    Ship(shop, shipped);
    LoadLanguage(shop.session);
    EXPECT_EQ(shop.form.command1[kStart].text(), "go " + shipped) << locale;
    EXPECT_EQ(shop.environment.thread, threadLocale) << locale;
    EXPECT_EQ(shop.session.language, threadLocale) << locale;
  }
}

TEST(Language, ReadsItsTablesCutsLongTextsAndPicksTheFirstFontThere) {
  Workshop shop;
  LoadLanguage(shop.session);
  EXPECT_EQ(shop.session.texts.strings[kTextStart], "") << "without any file";
  Ship(shop, "1031",
       "String(40)=" + std::string(300, 'x') +
           "\r\nCaption(12)= Options \r\nString(115)=no\r\n[More]\r\nMore(1)=mehr\r\n");
  Ship(shop, "1033", "String(41)=no\r\n[More]\r\nMore(1)=no\r\nMore(24)= more \r\n");
  shop.session.language = 1031;
  LoadLanguage(shop.session);
  EXPECT_EQ(shop.session.texts.strings[kTextFinished], std::string(254, 'x'));
  EXPECT_EQ(shop.form.frame[kOptionsFrame].text(), "Options");
  EXPECT_EQ(shop.session.texts.strings[kTextNoShutdown], "");
  EXPECT_EQ(shop.session.texts.more[kMoreVolumeFacts], "mehr");
  EXPECT_EQ(shop.session.texts.more[kMoreNotStarted], "more") << "English for want of its own";
  EXPECT_EQ(shop.form.font(), "Tahoma");
}

TEST(Language, SavesWhatLoadsBackToTheSameAndTakesOptionsOfTheRelatedOne) {
  Workshop shop;
  shop.files.put(kLang + std::string("1028.lng"),
                 "[Option]\r\nfont=b\r\nWidths=50,60,70,80,90\r\n");
  shop.files.put(kLang + std::string("3076.lng"),
                 "[Option]\r\nFont=a\r\nCodePage=CP950\r\n[Language]\r\nString(2)=' go '\r\n");
  shop.session.language = 3076;
  LoadLanguage(shop.session);
  EXPECT_TRUE(WriteLanguageFile(shop.session, kLang + std::string("3077.lng")));
  shop.files.drop(kLang + std::string("1028.lng"));
  const Texts texts = std::exchange(shop.session.texts, {});
  shop.session.language = 3077;
  LoadLanguage(shop.session);
  EXPECT_EQ(shop.session.texts.options, texts.options);
  EXPECT_EQ(shop.session.texts.strings, texts.strings);
  EXPECT_EQ(texts.options, (decltype(texts.options){"a", "50,60,70,80,90", "CP950", ""}));
}

}  // namespace pavoline
