#include "engine/ghost_restore.h"

#include <algorithm>

#include "engine/imaging_failure.h"
#include "form/text_numbers.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "run/command_runner.h"
#include "run/command_words.h"
#include "run/mid_between.h"
#include "run/taskbar_progress.h"

namespace pavoline {
namespace {

// The last build that is told its destination as a drive letter; later ones take disk:partition.
constexpr double kLastBuildByDrive = 10531;

// Ghost closes its window at the end, and the last percentage seen before that is often below
// 100. More than this counts as a completed restore.
constexpr int kEnoughPercent = 80;

constexpr std::uint64_t kLongestWindowless = 60'000;  // milliseconds that Ghost may take to end

std::string GhostCommand(Ground& ground, const Plan& plan) {
  const std::string destination =
      plan.ghostBuild <= kLastBuildByDrive ? "@os:" + plan.target.drive : plan.target.address;
  return ShortPath(ground, plan.ghostProgram) +
         " -noide -clone,mode=pload,src=" + ShortPath(ground, plan.source) +
         ":1,dst=" + destination + " -sure";
}

// Looks for the progress window of the program that was started, and hides the console that it runs
// in, which bears the program's short path as its title.
ForeignWindow FindGhostWindow(Ground& ground, const Plan& plan, GhostRun& run) {
  ForeignWindows& windows = ground.platform.windows;
  ForeignWindow found = 0;
  for (const ForeignWindow window : windows.listByClass("GhostScreen")) {
    const bool stranger = std::ranges::find(run.strangers, window) != run.strangers.end();
    if (stranger || windows.processOf(window) != run.tool->id()) continue;
    found = window;
    break;
  }
  const std::string title = ReplaceAll(ShortPath(ground, plan.ghostProgram), "\"", "");
  const ForeignWindow console = title.empty() ? 0 : windows.findByTitle(title);
  if (console != 0) windows.hide(console);
  return found;
}

StepResult Fail(Workplace& workplace, GhostRun& run) {
  workplace.form.timer2.setEnabled(false);
  const Failure failure = ImagingFailure(workplace, run.tool ? run.tool->lastWords(workplace) : "");
  if (run.tool) run.tool->close(workplace);
  return StepResult::Failed(failure);
}

StepResult AwaitGhost(Workplace& workplace, const Plan& plan, GhostRun& run) {
  run.window = FindGhostWindow(workplace, plan, run);
  if (run.window == 0) {
    const bool over =
        !run.tool->starterRuns() && run.tool->look(workplace) != FollowedProgram::Sign::kWorks;
    return over ? Fail(workplace, run) : StepResult::Waits();
  }
  workplace.form.status.setText(String(workplace, kTextExtracting));
  workplace.form.progressBar1.setValue(0);
  run.minimizePending = plan.minimizeGhost;
  workplace.form.timer2.setInterval(kGhostFollowInterval);
  return StepResult::Waits();
}

void ShowPercent(Workplace& workplace, GhostRun& run, const std::string& percent) {
  // A title may hold a dash and a percent sign of another kind.
  if (!IsNumeric(percent)) return;
  workplace.form.progressBar1.setValue(LeadingInteger16(percent));
  if (run.minimizePending) {
    run.minimizePending = false;
    workplace.platform.windows.minimize(run.window);
  }
  CallW7TaskProgress(workplace);
}

StepResult EndRestore(Workplace& workplace, GhostRun& run) {
  ProgressBar& bar = workplace.form.progressBar1;
  Journal(workplace, "Ghost has ended at " + std::to_string(bar.value()) + " percent");
  if (bar.value() <= kEnoughPercent) return Fail(workplace, run);
  workplace.form.timer2.setEnabled(false);
  run.tool->close(workplace);
  bar.setValue(100);
  CallW7TaskProgress(workplace);
  return StepResult::Done();
}

// A window without a title is the end only when the program has gone as well; one that has lost
// its window for good and lives on counts as ended.
bool HasEnded(Ground& ground, GhostRun& run) {
  if (!run.tool->starterRuns()) return run.tool->look(ground) != FollowedProgram::Sign::kWorks;
  if (ground.platform.windows.exists(run.window)) return false;
  const std::uint64_t now = ground.platform.environment.milliseconds();
  if (!run.goneSince) run.goneSince = now;
  return now - *run.goneSince >= kLongestWindowless;
}

StepResult FollowGhost(Workplace& workplace, GhostRun& run) {
  const std::string title = workplace.platform.windows.title(run.window);
  const std::string percent = Trim(MidBetween(title, " - ", "%", false));
  if (!percent.empty()) {
    ShowPercent(workplace, run, percent);
  } else if (title.empty() && HasEnded(workplace, run)) {
    return EndRestore(workplace, run);
  }
  return StepResult::Waits();
}

}  // namespace

std::string GhostMissingMessage(Ground& ground) {
  return ReplaceAll(String(ground, kTextGhostMissing), "%f%", ToolPath(ground.paths, Tool::kGhost));
}

StepResult GhoSetup(Workplace& workplace, const Plan& plan, GhostRun& run) {
  Form1& form = workplace.form;
  run.strangers = workplace.platform.windows.listByClass("GhostScreen");
  run.tool =
      StartProgram(workplace, GhostCommand(workplace, plan), {"ghost", ToolName(Tool::kGhost), ""});
  if (!run.tool) return Fail(workplace, run);
  form.timer2.setInterval(kGhostWaitInterval);
  form.timer2.setEnabled(true);
  return StepResult::Waits();
}

StepResult GhostTick(Workplace& workplace, const Plan& plan, GhostRun& run) {
  return run.window == 0 ? AwaitGhost(workplace, plan, run) : FollowGhost(workplace, run);
}

}  // namespace pavoline
