#include "support/workshop.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "platform/text.h"

namespace pavoline::testing {
namespace {

// Texts in which the program puts something in place of these words.
using Placeholders = std::map<std::size_t, std::string>;

template <class Table>
void Number(Table& table, const std::string& letter, const Placeholders& placeholders) {
  for (std::size_t n = 0; n < table.size(); ++n) {
    table[n] = letter + std::to_string(n);
    if (const auto it = placeholders.find(n); it != placeholders.end()) table[n] += it->second;
  }
}

Texts RecognisableTexts() {
  const Placeholders inStrings = {{14, " %f%"},     {15, " %bp%"}, {16, " %ip%"}, {17, " %ip_id%"},
                                  {19, " %ip_id%"}, {26, " %n%"},  {31, " %ip%"}, {55, " %n%"},
                                  {73, " %ip%"},    {68, " %bp%"}, {69, " %bp%"}, {78, " %f%"},
                                  {83, " %F%"},     {87, " %F%"},  {112, " %v%"}};
  const Placeholders inMore = {{1, " %label%, %size%, %fs%, %disk%"},
                               {3, " %f% %ip%"},
                               {4, " %bp%"},
                               {5, " %ip%"},
                               {8, " %ip% %bp%"},
                               {11, " %bp%"},
                               {12, " %f%"},
                               {13, " %f%"},
                               {16, " %ip% %bp%"},
                               {17, " %e%"},
                               {18, " %f%"},
                               {24, " %f%"},
                               {25, " %f%"},
                               {26, " %v% %f%"},
                               {27, " %f%"},
                               {28, " %f%"},
                               {30, " %n% %m%"},
                               {31, " %t%"},
                               {32, " %t%"},
                               {33, " %t%"},
                               {34, " %p%"},
                               {45, " %v%"},
                               {59, " %f%"},
                               {60, " %f% %n%"},
                               {71, " %efi% %msr% %win%"},
                               {72, " %sys% %win%"},
                               {75, " %n% %disk% %size%"},
                               {76, " %n% %disk%"},
                               {77, " %n%"},
                               {78, " %n% %disk%"},
                               {79, " %n% %disk% %bp% %ip%"}};
  Texts texts;
  Number(texts.strings, "S", inStrings);
  Number(texts.captions, "C", {});
  Number(texts.more, "M", inMore);
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
  session.texts = RecognisableTexts();
  session.osVersion = 10.0f;
  session.activity = Activity::kIdle;
  session.titleCaption = "Pavoline";
  form.setCaption("Pavoline");
  form.command1[kStart].setText(session.texts.strings[2]);
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
