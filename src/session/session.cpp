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

bool IsQuestion(int flags) {
  return flags == kQuestionWarning || flags == kQuestionError || flags == kQuestionDefaultCancel;
}

bool IsLanguageTag(const std::string& text) {
  return !text.empty() && std::ranges::all_of(text, [](unsigned char c) {
    return c < 0x80 && (std::isalnum(c) != 0 || c == '-');
  });
}

MessageLimit UsualLimit(const Session& session, int flags) {
  if (!session.commandLine.install) return {};
  return {session.commandLine.silent ? kSilentSeconds : kUnattendedSeconds,
          IsQuestion(flags) ? kAnswerCancel : kAnswerOk};
}

int Show(Session& session, const std::string& text, int flags, const std::string& title,
         const MessageLimit& limit, const MessageButton& further) {
  Journal(session, "message: " + title + ": " + text);
  const std::uint64_t shown = session.platform.environment.milliseconds();
  const int answer = session.platform.dialogs.message(text, flags, title, limit, further);
  const std::uint64_t passed = session.platform.environment.milliseconds() - shown;
  const char* given = answer == kAnswerOk ? "answer: OK" : "answer: Cancel";
  Journal(session,
          (IsQuestion(flags) ? given : "closed") + (" after " + std::to_string(passed) + " ms"));
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

int Message(Session& session, const std::string& text, int flags, const std::string& title) {
  return Show(session, text, flags, title, UsualLimit(session, flags), {});
}

int Message(Session& session, const std::string& text, int flags, const std::string& title,
            const MessageLimit& limit) {
  return Show(session, text, flags, title, limit, {});
}

int Message(Session& session, const std::string& text, int flags, const std::string& title,
            const MessageButton& further) {
  return Show(session, text, flags, title, UsualLimit(session, flags), further);
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
  if (SourceKindOf(session.form.combo1.text()).installedBy == InstalledBy::kGhostProgram) {
    session.form.check[kDoNotFormat].setEnabled(false);
  }
}

const WimImageInfo* ChosenEdition(const Session& session) {
  const auto chosen = static_cast<std::size_t>(session.form.combo[kEditions].selected());
  return chosen < session.editions.size() ? &session.editions[chosen] : nullptr;
}

std::string EditionLanguage(const Session& session) {
  const WimImageInfo* edition = ChosenEdition(session);
  if (edition != nullptr && IsLanguageTag(edition->language)) return edition->language;
  return session.fallbackLanguage;
}

}  // namespace pavoline
