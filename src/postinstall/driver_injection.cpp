#include "postinstall/driver_injection.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"
#include "postinstall/driver_log.h"
#include "run/command_runner.h"
#include "run/command_words.h"
#include "run/tool_files.h"

namespace pavoline {
namespace {

constexpr char kScript[] = "SetDrv";
constexpr int kLongestAnswer = 60;          // ticks
constexpr std::size_t kLogEnd = 64 * 1024;  // bytes; a line of dism's is a few hundred
constexpr std::size_t kWholeLog = 4 << 20;  // bytes; some ten thousand packages

std::string LogPath(Session& session) { return TempFile(session, "SetDrv.xml"); }

std::string InjectionLine(Session& session, const Plan& plan) {
  const std::string folder = session.platform.files.shortPath(plan.driverFolder);
  return "dism.exe /image:" + plan.target.drive +
         "\\ /Add-Driver /Driver:" + ReplaceAll(CommandWord(folder), "%", "%%") +
         " /recurse /forceunsigned >" + LogPath(session);
}

StepResult Finish(Session& session, DriverRun& run) {
  session.form.timer3.setEnabled(false);
  const std::string words = LastWords(session, LogPath(session));
  run.failed =
      FailedDrivers(session.platform.text.fromAnsi(ReadEnd(session, LogPath(session), kWholeLog)));
  session.platform.files.remove(LogPath(session));
  session.platform.files.remove(TempFile(session, "SetDrv.bat"));
  session.form.progressBar1.setValue(session.form.progressBar1.maximum());
  run.complete = run.tool->exitCode() == 0u;
  run.tool->close(session);
  Journal(session, (run.complete ? "drivers done: " : "drivers not complete: ") + words);
  for (const std::string& path : run.failed) Journal(session, "driver not added: " + path);
  return StepResult::Done();
}

}  // namespace

StepResult StartDriverInjection(Session& session, const Plan& plan, DriverRun& run) {
  // A log of an earlier run must not pass for this one's.
  session.platform.files.remove(LogPath(session));
  run.tool =
      StartBatch(session, InjectionLine(session, plan), {kScript, "dism.exe", LogPath(session)});
  if (!run.tool) return StepResult::Done();
  session.form.timer3.setEnabled(true);
  return StepResult::Waits();
}

StepResult DriverMonitorTick(Session& session, DriverRun& run) {
  Form1& form = session.form;
  if (form.unloaded()) return StepResult::Closed();
  const DriverStep step = ParseDriverLog(ReadEnd(session, LogPath(session), kLogEnd));
  if (step.kind == DriverStep::kInstalling) {
    form.status.setText(String(session, kTextAddingDrivers));
    form.progressBar1.setMaximum(step.total);
    form.progressBar1.setValue(step.done);
  }
  if (run.tool->silentForGood(session)) return Finish(session, run);
  if (step.kind == DriverStep::kSearching) {
    form.status.setText(String(session, kTextSearchingDrivers));
    return StepResult::Waits();
  }
  // Whatever the last line says: dism may fail and end with a long one that names its own log.
  if (run.tool->look(session) != FollowedProgram::Sign::kEnded) return StepResult::Waits();
  // The interpreter knows how dism ended, and follows it at once.
  const bool answerDue = run.tool->starterRuns() && ++run.ticksWithout < kLongestAnswer;
  return answerDue ? StepResult::Waits() : Finish(session, run);
}

}  // namespace pavoline
