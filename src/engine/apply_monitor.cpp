#include "engine/apply_monitor.h"

#include <optional>
#include <string>

#include "engine/apply_log.h"
#include "engine/command_runner.h"
#include "engine/setback.h"
#include "engine/taskbar_progress.h"
#include "form/text_numbers.h"
#include "platform/files.h"
#include "postinstall/setup_ok.h"

namespace pavoline {
namespace {

// Only ASCII is looked for in the log, so its bytes need no conversion.
std::optional<ApplyStep> LookAtLog(Session& session) {
  const auto text = session.platform.files.read(TempFile(session, "apply.xml"));
  if (!text) return std::nullopt;
  return ParseApplyLog(*text, session.apply);
}

// The program may have written its last lines and ended after the log was read: a second look
// tells an end from an accident.
bool ToolVanished(Session& session, ApplyStep& step) {
  if (IsProcessRunning(session, "wimlib-imagex.exe")) return false;
  if (const auto again = LookAtLog(session)) step = *again;
  return step.toolNeeded;
}

void Finish(Session& session) {
  session.form.timer1.setEnabled(false);
  session.platform.files.remove(TempFile(session, "apply.xml"));
  session.platform.files.remove(TempFile(session, "apply.bat"));
  Journal(session, "apply done");
  SetupOK(session);
}

void Fail(Session& session) {
  session.form.timer1.setEnabled(false);
  Journal(session, "wimlib-imagex.exe has ended before its work was done");
  FailInstallation(session, String(session, kTextApplyFailed), String(session, kTextError));
}

}  // namespace

void ApplyMonitorTick(Session& session) {
  auto step = LookAtLog(session);
  if (!step || session.form.unloaded()) return;
  if (step->finished) {
    Finish(session);
    return;
  }
  session.form.status.setText(String(session, step->status));
  if (step->toolNeeded && ToolVanished(session, *step)) {
    Fail(session);
    return;
  }
  session.apply = step->progress;
  if (!step->shown) return;
  session.form.progressBar1.setValue(*step->shown);
  CallW7TaskProgress(session);
}

}  // namespace pavoline
