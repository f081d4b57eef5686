#include "session/session.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "form/control_status.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {
namespace {

bool IsQuestion(MessageKind kind) {
  return kind == kQuestionWarning || kind == kQuestionError || kind == kQuestionDefaultCancel;
}

bool IsLanguageTag(const std::string& text) {
  return !text.empty() && std::ranges::all_of(text, [](unsigned char c) {
    return c < 0x80 && (std::isalnum(c) != 0 || c == '-');
  });
}

MessageLimit UsualLimit(const Session& session, MessageKind kind) {
  if (!session.commandLine.install) return {};
  return {session.commandLine.silent ? kSilentSeconds : kUnattendedSeconds,
          IsQuestion(kind) ? kAnswerCancel : kAnswerOk};
}

Answer Show(Session& session, const std::string& text, MessageKind kind, const std::string& title,
            const MessageLimit& limit, const MessageButton& further) {
  Journal(session, "message: " + title + ": " + text);
  const std::uint64_t shown = session.platform.environment.milliseconds();
  const Answer answer = session.platform.dialogs.message(text, kind, title, limit, further);
  const std::uint64_t passed = session.platform.environment.milliseconds() - shown;
  const char* given = answer == kAnswerOk ? "answer: OK" : "answer: Cancel";
  Journal(session,
          (IsQuestion(kind) ? given : "closed") + (" after " + std::to_string(passed) + " ms"));
  if (limit.seconds > 0 && passed >= static_cast<std::uint64_t>(limit.seconds) * 1000) {
    Journal(session, "not answered in " + std::to_string(limit.seconds) + " seconds");
  }
  return answer;
}

}  // namespace

const std::string& String(const Session& session, int n) {
  return session.texts.strings.at(static_cast<std::size_t>(n));
}

const std::string& More(const Session& session, int n) {
  return session.texts.more.at(static_cast<std::size_t>(n));
}

bool May(const Session& session, Action action) {
  return MayDo(session.activity, action) && !(session.commandLine.dryRun && ChangesDisks(action));
}

bool Interrupted(const Session& session) { return session.form.unloaded() || session.stopping; }

std::string TempFile(Session& session, const std::string& name) {
  return session.platform.environment.variable("windir") + "\\temp\\" + name;
}

Answer Message(Session& session, const std::string& text, MessageKind kind,
               const std::string& title) {
  return Show(session, text, kind, title, UsualLimit(session, kind), {});
}

Answer Message(Session& session, const std::string& text, MessageKind kind,
               const std::string& title, const MessageLimit& limit) {
  return Show(session, text, kind, title, limit, {});
}

Answer Message(Session& session, const std::string& text, MessageKind kind,
               const std::string& title, const MessageButton& further) {
  return Show(session, text, kind, title, UsualLimit(session, kind), further);
}

void Journal(Session& session, const std::string& text) {
  const LocalTime t = session.platform.environment.now();
  char stamp[64];
  std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d.%03d  ", t.year, t.month, t.day,
                t.hour, t.minute, t.second, t.millisecond);
  const std::string line = ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " ");
  const std::string& folder = session.paths.appDir;
  const std::string beside = folder.empty() ? folder : folder + "\\Pavoline.log";
  for (const std::string& file : {TempFile(session, "Pavoline.log"), beside}) {
    if (file.empty() || !session.platform.files.append(file, stamp + line + "\r\n")) continue;
    session.paths.journal = file;
    return;
  }
}

void ReturnToIdle(Session& session) {
  ControlStatus(session.form, session.texts, true);
  // Not formatting is no choice for a Ghost image; the source selection keeps the box's value.
  if (KindOf(session.form.combo1.text()) == ImageKind::kGho) {
    session.form.check[kDoNotFormat].setEnabled(false);
  }
}

std::string EditionLanguage(const Session& session) {
  const int chosen = session.form.combo[kEditions].selected();
  if (chosen >= 0 && chosen < static_cast<int>(session.editions.size())) {
    const auto& language = session.editions[static_cast<std::size_t>(chosen)].language;
    if (IsLanguageTag(language)) return language;
  }
  return session.fallbackLanguage;
}

std::string FromProgram(const Session& session, const std::string& path) {
  const std::string full = ReplaceAll(path, "%App.Path%", session.paths.appDir);
  return full.starts_with(".\\") ? session.paths.appDir + full.substr(1) : full;
}

}  // namespace pavoline
