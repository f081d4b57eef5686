#include "engine/text_mode_repair.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "platform/text.h"
#include "support/fake_text.h"

namespace pavoline::testing {
namespace {

// What a text-mode stream makes of bytes.
std::string Fault(const std::string& bytes) { return ReplaceAll(bytes, "\n", "\r\n"); }

std::string File(const std::string& text) { return "\xFF\xFE" + FakeTextServices().toUtf16(text); }

// Characters whose bytes hold 0x0A or 0x0D, or read as other letters when shifted by a byte; one
// script at a time, as names are written.
const std::vector<std::vector<std::string>> kScripts = {
    {"上", "一", "个", "版", "Ċ", "😊", "A", " ", "\r\n", "\n"},
    {"ਕ", "ਊ", "કਾ", "A", " ", "\n"},
    {"ക", "ഊ", "അ", "B", " ", "\n", "\r\n"},
};

std::string RandomName(std::mt19937& random) {
  const auto& script = kScripts[random() % kScripts.size()];
  std::string name;
  for (unsigned length = random() % 8; length > 0; --length) {
    name += script[random() % script.size()];
  }
  return name;
}

std::string RandomFile(std::mt19937& random) {
  std::string text = "<WIM>";
  for (unsigned count = random() % 5; count > 0; --count) {
    text += "<NAME>" + RandomName(random) + "</NAME>";
    if (random() % 4 == 0) text += "<FLAGS>\u0A0D</FLAGS>";
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
}

TEST(TextModeRepair, WorksForFilesCutAnywhere) {
  const std::string tag("<\0", 2);
  std::mt19937 random(2);
  for (int i = 0; i < 60; ++i) {
    const std::string sound = RandomFile(random);
    const std::string faulted = Fault(sound);
    for (std::size_t cut = 0; cut <= faulted.size(); ++cut) {
      // Of a faulted file all but the byte at the cut is restored.
      const std::string mended = RepairTextMode(faulted.substr(0, cut));
      ASSERT_TRUE(mended.empty() || sound.starts_with(mended.substr(0, mended.size() - 1)))
          << i << " cut at " << cut;
      // Of a sound one all before the name at the cut is kept.
      const std::string part = sound.substr(0, cut);
      const std::string certain = part.substr(0, std::min(part.rfind(tag), part.size()));
      ASSERT_TRUE(RepairTextMode(part).starts_with(certain)) << i << " cut at " << cut;
    }
  }
}

TEST(TextModeRepair, MendsNamesWithoutTagsBetweenTwoFaults) {
  for (const char* name : {"上上", "上一个上", "ਕ\n", "ਊਊ", "\n", "\r\n\r\n", "x上", ""}) {
    EXPECT_EQ(RepairTextMode(Fault(File(name))), File(name)) << name;
  }
}

}  // namespace
}  // namespace pavoline::testing
