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

std::string GhostCommand(Session& session, const Plan& plan) {
  const std::string destination =
      plan.ghostBuild <= kLastBuildByDrive ? "@os:" + plan.target.drive : plan.target.address;
  return ShortPath(session, plan.ghostProgram) +
         " -noide -clone,mode=pload,src=" + ShortPath(session, plan.source) +
         ":1,dst=" + destination + " -sure";
}

// Looks for the progress window of the program that was started, and hides the console that it runs
// in, which bears the program's short path as its title.
ForeignWindow FindGhostWindow(Session& session, const Plan& plan, GhostRun& run) {
  ForeignWindows& windows = session.platform.windows;
  ForeignWindow found = 0;
  for (const ForeignWindow window : windows.listByClass("GhostScreen")) {
    const bool stranger = std::ranges::find(run.strangers, window) != run.strangers.end();
    if (stranger || windows.processOf(window) != run.tool->id()) continue;
    found = window;
    break;
  }
  const std::string title = ReplaceAll(ShortPath(session, plan.ghostProgram), "\"", "");
  const ForeignWindow console = title.empty() ? 0 : windows.findByTitle(title);
  if (console != 0) windows.hide(console);
  return found;
}

StepResult Fail(Session& session, GhostRun& run) {
  session.form.timer2.setEnabled(false);
  const Failure failure = ImagingFailure(session, run.tool ? run.tool->lastWords(session) : "");
  if (run.tool) run.tool->close(session);
  return StepResult::Failed(failure);
}

StepResult AwaitGhost(Session& session, const Plan& plan, GhostRun& run) {
  run.window = FindGhostWindow(session, plan, run);
  if (run.window == 0) {
    const bool over =
        !run.tool->starterRuns() && run.tool->look(session) != FollowedProgram::Sign::kWorks;
    return over ? Fail(session, run) : StepResult::Waits();
  }
  session.form.status.setText(String(session, kTextExtracting));
  session.form.progressBar1.setValue(0);
  run.minimizePending = plan.minimizeGhost;
  session.form.timer2.setInterval(kGhostFollowInterval);
  return StepResult::Waits();
}

void ShowPercent(Session& session, GhostRun& run, const std::string& percent) {
  // A title may hold a dash and a percent sign of another kind.
  if (!IsNumeric(percent)) return;
  session.form.progressBar1.setValue(LeadingInteger16(percent));
  if (run.minimizePending) {
    run.minimizePending = false;
    session.platform.windows.minimize(run.window);
  }
  CallW7TaskProgress(session);
}

StepResult EndRestore(Session& session, GhostRun& run) {
  ProgressBar& bar = session.form.progressBar1;
  Journal(session, "Ghost has ended at " + std::to_string(bar.value()) + " percent");
  if (bar.value() <= kEnoughPercent) return Fail(session, run);
  session.form.timer2.setEnabled(false);
  run.tool->close(session);
  bar.setValue(100);
  CallW7TaskProgress(session);
  return StepResult::Done();
}

// A window without a title is the end only when the program has gone as well; one that has lost
// its window for good and lives on counts as ended.
bool HasEnded(Session& session, GhostRun& run) {
  if (!run.tool->starterRuns()) return run.tool->look(session) != FollowedProgram::Sign::kWorks;
  if (session.platform.windows.exists(run.window)) return false;
  const std::uint64_t now = session.platform.environment.milliseconds();
  if (!run.goneSince) run.goneSince = now;
  return now - *run.goneSince >= kLongestWindowless;
}

StepResult FollowGhost(Session& session, GhostRun& run) {
  const std::string title = session.platform.windows.title(run.window);
  const std::string percent = Trim(MidBetween(title, " - ", "%", false));
  if (!percent.empty()) {
    ShowPercent(session, run, percent);
  } else if (title.empty() && HasEnded(session, run)) {
    return EndRestore(session, run);
  }
  return StepResult::Waits();
}

}  // namespace

std::string GhostMissingMessage(Session& session) {
  return ReplaceAll(String(session, kTextGhostMissing), "%f%",
                    ToolPath(session.paths, Tool::kGhost));
}

StepResult GhoSetup(Session& session, const Plan& plan, GhostRun& run) {
  Form1& form = session.form;
  run.strangers = session.platform.windows.listByClass("GhostScreen");
  run.tool =
      StartProgram(session, GhostCommand(session, plan), {"ghost", ToolName(Tool::kGhost), ""});
  if (!run.tool) return Fail(session, run);
  form.timer2.setInterval(kGhostWaitInterval);
  form.timer2.setEnabled(true);
  return StepResult::Waits();
}

StepResult GhostTick(Session& session, const Plan& plan, GhostRun& run) {
  if (session.form.unloaded()) return StepResult::Closed();
  return run.window == 0 ? AwaitGhost(session, plan, run) : FollowGhost(session, run);
}

}  // namespace pavoline
