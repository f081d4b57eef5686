#include "engine/setback.h"

#include "engine/taskbar_progress.h"
#include "platform/dialogs.h"
#include "platform/taskbar.h"

namespace pavoline {

void RefuseInstallation(Session& session, const std::string& text, int flags,
                        const std::string& title) {
  Message(session, text, flags, title);
  if (session.form.unloaded()) return;
  ReturnToIdle(session);
  if (session.commandLine.install) session.form.unload();
}

void FailInstallation(Session& session, const std::string& text, const std::string& title) {
  Message(session, text, kErrorMessage, title);
  if (session.form.unloaded()) return;
  session.form.progressBar1.setValue(0);
  CallW7TaskProgress(session);
  session.platform.taskbar.setProgressState(TaskbarState::kNone);
  ReturnToIdle(session);
}

}  // namespace pavoline
