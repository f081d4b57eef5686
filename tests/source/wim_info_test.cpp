#include "source/wim_info.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "platform/text.h"
#include "run/text_mode_repair.h"
#include "support/workshop.h"

namespace pavoline::testing {

// Output of "wimlib-imagex info FILE --xml" (1.13.6) for a file with three images.
std::string Capture() {
  std::ifstream file(PAVOLINE_SOURCE_DIR "/tests/source/captures/three_images.xml",
                     std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Xml(const std::string& bytes) {
  FakeTextServices text;
  return text.fromUtf16(bytes.size() < 2 ? "" : RepairTextMode(bytes).substr(2));
}

TEST(WimInfo, ReadsWhatTheImagingProgramWrites) {
  // As written, and as its Windows build writes it.
  for (const std::string& bytes : {Capture(), ReplaceAll(Capture(), "\n", "\r\n")}) {
    const auto images = ParseWimInfo(Xml(bytes));
    ASSERT_EQ(images.size(), 3u);
    const auto lines = [&](int n) { return images[n].listText + "|" + images[n].detailText; };
    EXPECT_EQ(lines(0), "Windows 10 Pro  64-Bit|Windows 10 Pro  64-Bit  en-US  10.0.19041.1");
    EXPECT_EQ(lines(1), "上一个上 專業版  32位|上一个上 專業版  32-Bit  zh-CN  6.1.7601.17514");
    EXPECT_EQ(images[1].language, "zh-CN");
    EXPECT_EQ(lines(2), "Windows 10  ARM  32位-Bit|Windows 10 ARM  32-Bit  zh-CN  6.1.7601.17514");
    EXPECT_EQ(images[2].index, 3);
  }
}

TEST(WimInfo, TakesOutputCutAnywhereAndThousandsOfImagesWithoutTags) {
  const std::string whole = ReplaceAll(Capture(), "\n", "\r\n");
  std::size_t before = 0;
  for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
    const std::size_t count = ParseWimInfo(Xml(whole.substr(0, cut))).size();
    ASSERT_TRUE(count == before || count == before + 1) << "cut at " << cut;
    before = count;
  }
  EXPECT_EQ(before, 3u);
  std::string xml;
  for (int n = 0; n < 20'000; ++n) xml += "INDEX</IMAGE>";
  const auto images = ParseWimInfo(xml);
  EXPECT_EQ(images.size(), 20'000u);
  EXPECT_LT(images.back().listText.size(), 2000u);
}

TEST(WimInfo, BuildsTheLines) {
  const std::string nine = "<IMAGE INDEX=\"1\"><ARCH>9</ARCH><NAME>A  B</NAME></IMAGE>";
  // Expected are the lines of the last image.
  const std::tuple<std::string, const char*, const char*> cases[] = {
      {nine, "A  B  64-Bit", "A B"},
      {nine + "INDEX<ARCH>12</ARCH><NAME>C</NAME>", "C  64-Bit-Bit", "C"},
      {"INDEX<ARCH>9</ARCH><LANGUAGE>ZH-CN</LANGUAGE><DISPLAYNAME>D</DISPLAYNAME><NAME>C</NAME>",
       "D  64位", "C  64-Bit  ZH-CN  ..."},
      {"INDEX<NAME>C</NAME><LANGUAGE>en-US</LANGUAGE><LANGUAGE>de-DE</LANGUAGE>", "C-Bit",
       "C-Bit  en-US  ..."},
      {"INDEX<ARCH>9</ARCH><NAME>A &amp;lt; B &lt;&quot;&gt;</NAME>", "A &lt; B <\">  64-Bit",
       "A &lt; B <\">"},
      {"INDEX<NAME></NAME><DISPLAYNAME>D", "-Bit", ""}};
  for (const auto& [xml, list, details] : cases) {
    const auto images = ParseWimInfo(xml);
    ASSERT_FALSE(images.empty()) << xml;
    EXPECT_EQ(images.back().listText, list) << xml;
    EXPECT_EQ(images.back().detailText, details) << xml;
  }
  EXPECT_TRUE(ParseWimInfo("<IMAGE index=\"1\"></IMAGE>some error").empty());
}

TEST(WimInfo, OnlyLanguageTagsReachCommandLines) {
  Workshop w;
  w.session.fallbackLanguage = "de-DE";
  for (const std::string tag : {"zh-CN", "", "en-US&format", "en US", "\u0663"}) {
    w.form.combo[kEditions].addItem(tag);
    w.session.editions.emplace_back().language = tag;
    w.form.combo[kEditions].select(static_cast<int>(w.session.editions.size()) - 1);
    EXPECT_EQ(EditionLanguage(w.session), tag == "zh-CN" ? tag : "de-DE");
  }
}

}  // namespace pavoline::testing
