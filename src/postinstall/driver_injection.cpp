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

std::string LogPath(Ground& ground) { return TempFile(ground, "SetDrv.xml"); }

std::string InjectionLine(Ground& ground, const Plan& plan) {
  const std::string folder = ground.platform.files.shortPath(plan.driverFolder);
  return "dism.exe /image:" + plan.target.drive +
         "\\ /Add-Driver /Driver:" + ReplaceAll(CommandWord(folder), "%", "%%") +
         " /recurse /forceunsigned >" + LogPath(ground);
}

StepResult Finish(Workplace& workplace, DriverRun& run) {
  workplace.form.timer3.setEnabled(false);
  const std::string words = LastWords(workplace, LogPath(workplace));
  run.failed = FailedDrivers(
      workplace.platform.text.fromAnsi(ReadEnd(workplace, LogPath(workplace), kWholeLog)));
  workplace.platform.files.remove(LogPath(workplace));
  workplace.platform.files.remove(TempFile(workplace, "SetDrv.bat"));
  workplace.form.progressBar1.setValue(workplace.form.progressBar1.maximum());
  run.complete = run.tool->exitCode() == 0u;
  run.tool->close(workplace);
  Journal(workplace, (run.complete ? "drivers done: " : "drivers not complete: ") + words);
  for (const std::string& path : run.failed) Journal(workplace, "driver not added: " + path);
  return StepResult::Done();
}

}  // namespace

StepResult StartDriverInjection(Workplace& workplace, const Plan& plan, DriverRun& run) {
  // A log of an earlier run must not pass for this one's.
  workplace.platform.files.remove(LogPath(workplace));
  run.tool = StartBatch(workplace, InjectionLine(workplace, plan),
                        {kScript, "dism.exe", LogPath(workplace)});
  if (!run.tool) return StepResult::Done();
  workplace.form.timer3.setEnabled(true);
  return StepResult::Waits();
}

StepResult DriverMonitorTick(Workplace& workplace, DriverRun& run) {
  Form1& form = workplace.form;
  const DriverStep step = ParseDriverLog(ReadEnd(workplace, LogPath(workplace), kLogEnd));
  if (step.kind == DriverStep::kInstalling) {
    form.status.setText(String(workplace, kTextAddingDrivers));
    form.progressBar1.setMaximum(step.total);
    form.progressBar1.setValue(step.done);
  }
  if (run.tool->silentForGood(workplace)) return Finish(workplace, run);
  if (step.kind == DriverStep::kSearching) {
    form.status.setText(String(workplace, kTextSearchingDrivers));
    return StepResult::Waits();
  }
  // Whatever the last line says: dism may fail and end with a long one that names its own log.
  if (run.tool->look(workplace) != FollowedProgram::Sign::kEnded) return StepResult::Waits();
  // The interpreter knows how dism ended, and follows it at once.
  const bool answerDue = run.tool->starterRuns() && ++run.ticksWithout < kLongestAnswer;
  return answerDue ? StepResult::Waits() : Finish(workplace, run);
}

}  // namespace pavoline
