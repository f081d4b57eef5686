#include "support/workshop.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>

#include "platform/text.h"

namespace pavoline::testing {
namespace {

#define PAVOLINE_NAME(name) #name,
constexpr const char* kStrings[] = {PAVOLINE_STRINGS(PAVOLINE_NAME)};
constexpr const char* kCaptions[] = {PAVOLINE_CAPTIONS(PAVOLINE_NAME)};
constexpr const char* kMore[] = {PAVOLINE_MORE(PAVOLINE_NAME)};
#undef PAVOLINE_NAME

// The words of the English text that the program puts something in place of, each after a blank.
std::string PlaceholdersOf(const std::string& text) {
  static const std::regex placeholder("%[A-Za-z_]+%");
  std::string found;
  for (std::sregex_iterator it(text.begin(), text.end(), placeholder), end; it != end; ++it) {
    found += " " + it->str();
  }
  return found;
}

// Every text by its name, with its placeholders behind.
Texts RecognisableTexts() {
  Texts texts;
  std::ranges::copy(kStrings, texts.strings.begin());
  std::ranges::copy(kCaptions, texts.captions.begin());
  std::ranges::copy(kMore, texts.more.begin());
  std::ifstream file(PAVOLINE_SOURCE_DIR "/lang/1033.lng");
  const std::regex entry("(String|More)\\(([0-9]+)\\)=(.*)");
  std::smatch parts;
  for (std::string line; std::getline(file, line);) {
    if (!std::regex_match(line, parts, entry)) continue;
    const std::size_t n = std::stoul(parts[2]);
    (parts[1] == "More" ? texts.more.at(n) : texts.strings.at(n)) += PlaceholdersOf(parts[3]);
  }
  return texts;
}

void FurnishProgram(Workshop& workshop) {
  const std::string bin = "X:\\Pavoline\\Bin";
  workshop.files.put("X:\\Pavoline\\Pavoline.exe");
  workshop.files.put(bin + "\\wimlib-imagex\\x64\\wimlib-imagex.exe");
  workshop.session.language = workshop.environment.thread;
  ProgramPaths& paths = workshop.session.paths;
  paths.appDir = "X:\\Pavoline";
  paths.appParentDir = "X:";
  paths.binDir = bin;
  paths.settingsPath = "X:\\Pavoline\\Pavoline.ini";
  paths.langFile = "X:\\Pavoline\\Lang\\1033.lng";
  paths.imageToolArch = "x64";
}

}  // namespace

Workshop::Workshop() {
  FurnishSystem(*this);
  FurnishProgram(*this);
  static const Texts texts = RecognisableTexts();
  session.texts = texts;
  session.osVersion = 10.0f;
  session.activity = Activity::kIdle;
  session.titleCaption = "Pavoline";
  form.setCaption("Pavoline");
  form.command1[kStart].setText(session.texts.strings[kTextStart]);
  time.watch(form);
}

bool Workshop::runUntil(const std::function<bool()>& reached, long limitMs) {
  const long end = time.now() + limitMs;
  while (!reached()) {
    if (time.now() >= end || !time.anythingAhead()) return false;
    time.advanceToNext();
  }
  return true;
}

bool Workshop::said(const std::string& partOfMessage) const {
  return std::any_of(dialogs.messages.begin(), dialogs.messages.end(),
                     [&](const auto& shown) { return Contains(shown.text, partOfMessage); });
}

std::vector<std::string> Workshop::heard() const {
  static constexpr int kFlags[] = {16, 17, 48, 49, 64, 305};  // by kind, as the system has them
  std::vector<std::string> result;
  for (const auto& shown : dialogs.messages) {
    result.push_back(shown.text + "|" + shown.title + "|" + std::to_string(kFlags[shown.kind]));
  }
  return result;
}

void Workshop::putSplitImage(const std::string& path) {
  for (const char* ending : {".swm", "2.swm", "3.swm"}) {
    std::ifstream file(PAVOLINE_SOURCE_DIR "/tests/support/captures/split" + std::string(ending),
                       std::ios::binary);
    files.put(path + ending, (std::ostringstream() << file.rdbuf()).str());
  }
}

}  // namespace pavoline::testing
