#include "postinstall/driver_injection.h"

#include "engine/command_runner.h"
#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "postinstall/driver_log.h"
#include "postinstall/plugins.h"

namespace pavoline {
namespace {

constexpr char kScript[] = "SetDrv";

std::string LogPath(Session& session) { return TempFile(session, "SetDrv.xml"); }

std::string InjectionLine(Session& session) {
  const Form1& form = session.form;
  const std::string folder = session.platform.files.shortPath(form.text[kDriverFolder].text());
  return "dism.exe /image:" + form.text[kInstallPartition].text() +
         "\\ /Add-Driver /Driver:" + ReplaceAll(CommandWord(folder), "%", "%%") +
         " /recurse /forceunsigned >" + LogPath(session);
}

void Finish(Session& session) {
  session.platform.files.remove(LogPath(session));
  session.platform.files.remove(TempFile(session, "SetDrv.bat"));
  session.form.timer3.setEnabled(false);
  session.form.progressBar1.setValue(session.form.progressBar1.maximum());
  Journal(session, "drivers done");
  CallPlugin(session);
}

}  // namespace

void StartDriverInjection(Session& session) {
  // A log of an earlier run must not pass for this one's.
  session.platform.files.remove(LogPath(session));
  if (!StartBatch(session, InjectionLine(session), kScript)) {
    CallPlugin(session);
    return;
  }
  session.form.timer3.setEnabled(true);
}

void DriverMonitorTick(Session& session) {
  Form1& form = session.form;
  if (form.unloaded()) return;
  const std::string log = session.platform.files.read(LogPath(session)).value_or(std::string());
  const DriverStep step = ParseDriverLog(log);
  if (step.kind == DriverStep::kSearching) {
    form.status.setText(String(session, kTextSearchingDrivers));
    return;
  }
  if (step.kind == DriverStep::kInstalling) {
    form.status.setText(String(session, kTextAddingDrivers));
    form.progressBar1.setMaximum(step.total);
    form.progressBar1.setValue(step.done);
  }
  // Whatever the last line says: dism may fail and end with a long one that names its own log.
  if (!IsProcessRunning(session, "dism.exe")) Finish(session);
}

}  // namespace pavoline
