#include "ui/help_page.h"

#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace pavoline {

void OpenHelpPage(Session& session) {
  const std::string folder = session.paths.appDir + "\\Help\\";
  std::string page = folder + std::to_string(session.platform.environment.threadLocale()) + ".html";
  if (!session.platform.files.exists(page)) page = folder + "1033.html";
  if (!session.platform.dialogs.openDocument(page)) Journal(session, "not opened: " + page);
}

}  // namespace pavoline
