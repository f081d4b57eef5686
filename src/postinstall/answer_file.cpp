#include "postinstall/answer_file.h"

#include <cstdio>
#include <utility>

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "postinstall/utf8_check.h"
#include "run/tool_files.h"
#include "session/machine_facts.h"
#include "session/random_letter.h"

namespace pavoline {
namespace {

constexpr char kTemplateMark[] = "[Pavoline]";

// The template's text without its first character, which is the byte-order mark; a template
// without one loses a real character. Empty for bytes that are not UTF-8: what could be made of
// them would be no answer file, and setup stops at a broken one where it does without a missing
// one.
std::string TemplateText(Ground& ground, const std::string& path) {
  const std::string bytes = ReadUtf8File(ground, path);
  if (bytes.empty() || !IsUtf8Text(bytes)) {
    Journal(ground, "answer file skipped, no UTF-8 text: " + path);
    return {};
  }
  return bytes.substr(Utf8Length(bytes.front()));
}

// "PAVO-" + date + two letters: 15 characters, the longest name a network takes.
std::string GeneratedName(Environment& environment) {
  environment.reseedRandom();
  const LocalTime today = environment.now();
  char date[32];
  std::snprintf(date, sizeof date, "%04d%02d%02d", today.year, today.month, today.day);
  std::string name = std::string("PAVO-") + date;
  name += RandomLetter(environment);
  name += RandomLetter(environment);
  return name;
}

// A name with one of these characters would break the answer file; control characters have no form
// in which it could hold them.
std::string XmlText(const std::string& value) {
  std::string text = ReplaceAll(value, "&", "&amp;");
  std::erase_if(text, [](unsigned char c) { return c < ' '; });
  text = ReplaceAll(text, "<", "&lt;");
  text = ReplaceAll(text, ">", "&gt;");
  return ReplaceAll(text, "\"", "&quot;");
}

// Puts the names in. Defaults for user and workgroup stay with the options; a generated computer
// name does not, so that the next installation gets its own.
std::string FillNames(Session& session, std::string text) {
  InstallOptions& options = session.options;
  if (options.pcUser.empty()) options.pcUser = "PAVO";
  if (options.workGroup.empty()) options.workGroup = "WORKGROUP";
  std::string computer =
      WithMachineFacts(session, options.computerName, ValueUse::kComputerName).text;
  if (computer.empty()) computer = GeneratedName(session.platform.environment);
  Journal(session, "computer name " + computer);
  text = ReplaceAll(std::move(text), "%Pavoline-User%", XmlText(options.pcUser));
  text = ReplaceAll(std::move(text), "%Pavoline-PC%", XmlText(computer));
  return ReplaceAll(std::move(text), "%Pavoline-Group%", XmlText(options.workGroup));
}

// The edition's language; without one, that of the boot files.
std::string SystemLanguage(const SourceState& source, const Plan& plan) {
  if (!plan.language.empty()) return plan.language;
  return source.fallbackLanguage.empty() ? "en-US" : source.fallbackLanguage;
}

void Save(Ground& ground, const std::string& text, const std::string& folder) {
  Files& files = ground.platform.files;
  if (!files.exists(folder)) files.createFolder(folder);
  const std::string path = folder + "\\unattend.xml";
  if (WriteUtf8File(ground, text, path, true)) {
    Journal(ground, "answer file " + path);
    return;
  }
  files.remove(path);
  Journal(ground, "could not be written: " + path);
  if (ground.commandLine.silent) return;
  Message(ground, ReplaceAll(String(ground, kTextCannotWrite), "%f%", path), kErrorMessage,
          String(ground, kTextError));
}

}  // namespace

void WriteAnswerFile(Session& session, const Plan& plan) {
  Files& files = session.platform.files;
  const std::string windows = plan.target.drive + "\\Windows";
  if (files.exists(windows + "\\Panther\\unattend.xml")) return;
  session.form.status.setText(String(session, kTextWritingAnswerFile));

  if (!files.exists(plan.answerFile)) return;
  std::string text = TemplateText(session, plan.answerFile);
  if (text.empty()) return;
  // The built-in one logs on as Administrator by itself.
  if (Contains(text, kTemplateMark) && LowerAscii(session.options.pcUser) == "administrator") {
    text = BuiltInAnswerFile();
  }
  const bool is64Bit = files.exists(windows + "\\SysWOW64");
  text = ReplaceAll(std::move(text), "%Pavoline-Arch%", is64Bit ? "amd64" : "x86");
  text = ReplaceAll(std::move(text), "%Pavoline-Lang%", SystemLanguage(session, plan));
  Save(session, FillNames(session, std::move(text)), windows + "\\Panther");
}

}  // namespace pavoline
