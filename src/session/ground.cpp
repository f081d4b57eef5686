#include "session/ground.h"

#include <cstdio>

#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {
namespace {

bool IsQuestion(MessageKind kind) {
  return kind == kQuestionWarning || kind == kQuestionError || kind == kQuestionDefaultCancel;
}

MessageLimit UsualLimit(const Ground& ground, MessageKind kind) {
  if (!ground.commandLine.install) return {};
  return {ground.commandLine.silent ? kSilentSeconds : kUnattendedSeconds,
          IsQuestion(kind) ? kAnswerCancel : kAnswerOk};
}

Answer Show(Ground& ground, const std::string& text, MessageKind kind, const std::string& title,
            const MessageLimit& limit, const MessageButton& further) {
  Journal(ground, "message: " + title + ": " + text);
  const std::uint64_t shown = ground.platform.environment.milliseconds();
  const Answer answer = ground.platform.dialogs.message(text, kind, title, limit, further);
  const std::uint64_t passed = ground.platform.environment.milliseconds() - shown;
  const char* given = answer == kAnswerOk ? "answer: OK" : "answer: Cancel";
  Journal(ground,
          (IsQuestion(kind) ? given : "closed") + (" after " + std::to_string(passed) + " ms"));
  if (limit.seconds > 0 && passed >= static_cast<std::uint64_t>(limit.seconds) * 1000) {
    Journal(ground, "not answered in " + std::to_string(limit.seconds) + " seconds");
  }
  return answer;
}

}  // namespace

const std::string& String(const Ground& ground, int n) {
  return ground.texts.strings.at(static_cast<std::size_t>(n));
}

const std::string& More(const Ground& ground, int n) {
  return ground.texts.more.at(static_cast<std::size_t>(n));
}

std::string TempFile(Ground& ground, const std::string& name) {
  return ground.platform.environment.variable("windir") + "\\temp\\" + name;
}

Answer Message(Ground& ground, const std::string& text, MessageKind kind,
               const std::string& title) {
  return Show(ground, text, kind, title, UsualLimit(ground, kind), {});
}

Answer Message(Ground& ground, const std::string& text, MessageKind kind, const std::string& title,
               const MessageLimit& limit) {
  return Show(ground, text, kind, title, limit, {});
}

Answer Message(Ground& ground, const std::string& text, MessageKind kind, const std::string& title,
               const MessageButton& further) {
  return Show(ground, text, kind, title, UsualLimit(ground, kind), further);
}

void Journal(Ground& ground, const std::string& text) {
  const LocalTime t = ground.platform.environment.now();
  char stamp[64];
  std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d.%03d  ", t.year, t.month, t.day,
                t.hour, t.minute, t.second, t.millisecond);
  const std::string line = ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " ");
  const std::string& folder = ground.paths.appDir;
  const std::string beside = folder.empty() ? folder : folder + "\\Pavoline.log";
  for (const std::string& file : {TempFile(ground, "Pavoline.log"), beside}) {
    if (file.empty() || !ground.platform.files.append(file, stamp + line + "\r\n")) continue;
    ground.paths.journal = file;
    return;
  }
}

}  // namespace pavoline
