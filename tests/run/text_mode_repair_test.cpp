#include "run/text_mode_repair.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/text.h"
#include "support/fake_text.h"

namespace pavoline::testing {

// What a text-mode stream makes of bytes.
std::string Fault(const std::string& bytes) { return ReplaceAll(bytes, "\n", "\r\n"); }

std::string File(const std::string& text) { return "\xFF\xFE" + FakeTextServices().toUtf16(text); }

// Characters whose bytes hold 0x0A or 0x0D, or read as other letters when shifted by a byte; one
// script at a time, as names are written.
const std::vector<std::vector<std::string>> kScripts = {
    {"上", "一", "个", "版", "Ċ", "😊", "A", " ", "\r\n", "\n"},
    {"ਕ", "ਊ", "કਾ", "A", " ", "\n"},
    {"ക", "ഊ", "അ", "B", " ", "\n", "\r\n"}};

std::string RandomFile(std::mt19937& random) {
  std::string text = "<WIM>";
  for (unsigned names = random() % 5; names > 0; --names) {
    const auto& script = kScripts[random() % kScripts.size()];
    text += "<NAME>";
    for (unsigned length = random() % 8; length > 0; --length) {
      text += script[random() % script.size()];
    }
    text += random() % 4 ? "</NAME>" : "</NAME><FLAGS>\u0A0D</FLAGS>";
  }
  return File(text + "</WIM>");
}

TEST(TextModeRepair, RestoresFaultedTextAndKeepsSoundText) {
  std::mt19937 random(1);
  for (int i = 0; i < 3000; ++i) {
    const std::string sound = RandomFile(random);
    ASSERT_EQ(RepairTextMode(Fault(sound)), sound) << "text " << i;
    ASSERT_EQ(RepairTextMode(sound), sound) << "text " << i;
  }
  for (const char* name : {"上上", "上一个上", "ਕ\n", "ਊਊ", "\n", "\r\n\r\n", "x上", ""}) {
    EXPECT_EQ(RepairTextMode(Fault(File(name))), File(name)) << name;
  }
}

}  // namespace pavoline::testing
