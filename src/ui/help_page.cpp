#include "ui/help_page.h"

#include "config/locales.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "run/command_runner.h"
#include "run/command_words.h"

namespace pavoline {
namespace {

// The help in the language in use or else in English; `kind` is the file's extension.
std::string HelpFile(Session& session, const char* kind) {
  const std::string folder = session.paths.appDir + "\\Help\\";
  const std::string file = folder + std::to_string(session.language) + kind;
  return session.platform.files.exists(file) ? file : folder + std::to_string(kEnglish) + kind;
}

}  // namespace

void OpenHelpPage(Session& session) {
  const std::string page = HelpFile(session, ".html");
  if (session.platform.dialogs.openDocument(page)) return;
  Journal(session, "not opened: " + page);
  const std::string text = HelpFile(session, ".txt");
  if (session.platform.files.exists(text) &&
      ShellNoWait(session, "notepad.exe " + ShortPath(session, text), ShowMode::kNormal)) {
    return;
  }
  Message(session, "PE environment help is not available.", kInformationMessage,
          String(session, kTextInformation));
}

}  // namespace pavoline
