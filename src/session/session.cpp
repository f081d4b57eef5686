#include "session/session.h"

#include <algorithm>
#include <cctype>

#include "form/control_status.h"

namespace pavoline {
namespace {

bool IsLanguageTag(const std::string& text) {
  return !text.empty() && std::ranges::all_of(text, [](unsigned char c) {
    return c < 0x80 && (std::isalnum(c) != 0 || c == '-');
  });
}

}  // namespace

bool May(const Session& session, Action action) {
  return MayDo(session.activity, action) && !(session.commandLine.dryRun && ChangesDisks(action));
}

bool Interrupted(const Workplace& workplace) {
  return workplace.form.unloaded() || workplace.stopping;
}

void ReturnToIdle(Workplace& workplace) {
  ControlStatus(workplace.form, workplace.texts, true);
  // Not formatting is no choice for a Ghost image; the source selection keeps the box's value.
  if (SourceKindOf(workplace.form.combo1.text()).installedBy == InstalledBy::kGhostProgram) {
    workplace.form.check[kDoNotFormat].setEnabled(false);
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
