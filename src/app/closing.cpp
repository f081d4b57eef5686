#include "app/closing.h"

#include "engine/command_runner.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "source/iso_mount.h"

namespace pavoline {

bool QueryUnload(Session& session) {
  if (!session.form.busy) return true;
  if (!session.commandLine.install &&
      Message(session, String(session, kTextCloseQuestion), kQuestionError,
              String(session, kTextCloseTitle)) != kAnswerOk) {
    return false;
  }
  for (const char* tool : {"wimlib-imagex.exe", "ghost.exe", "dism.exe"}) {
    KillProcessByName(session, tool);
  }
  return true;
}

void Unload(Session& session) {
  session.search.stop = true;
  for (Timer* timer : session.form.timers()) timer->setEnabled(false);
  if (!session.mountedIsoDrive.empty()) {
    ShellNoWait(session, DismountCommand(session, session.mountedIsoDrive), ShowMode::kHidden);
    session.mountedIsoDrive.clear();
  }
  Journal(session, "closed");
}

}  // namespace pavoline
