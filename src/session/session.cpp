#include "session/session.h"

#include <cstdio>

#include "form/control_status.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {

const std::string& String(const Session& session, int n) {
  return session.texts.strings.at(static_cast<std::size_t>(n));
}

std::string TempFile(Session& session, const std::string& name) {
  return session.platform.environment.variable("windir") + "\\temp\\" + name;
}

int Message(Session& session, const std::string& text, int flags, const std::string& title) {
  Journal(session, "message: " + title + ": " + text);
  const int answer = session.platform.dialogs.message(text, flags, title);
  if (flags == kQuestionWarning || flags == kQuestionError) {
    Journal(session, answer == kAnswerOk ? "answer: OK" : "answer: Cancel");
  }
  return answer;
}

void Journal(Session& session, const std::string& text) {
  const LocalTime t = session.platform.environment.now();
  char stamp[48];
  std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d  ", t.year, t.month, t.day,
                t.hour, t.minute, t.second);
  const std::string line = ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " ");
  session.platform.files.append(TempFile(session, "Pavoline.log"), stamp + line + "\r\n");
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
    if (!language.empty()) return language;
  }
  return session.fallbackLanguage;
}

}  // namespace pavoline
