#include "install/installation.h"

#include <memory>
#include <utility>

#include "disk/lent_letter.h"
#include "form/control_status.h"
#include "form/main_layout.h"
#include "install/order.h"
#include "install/record.h"
#include "platform/environment.h"
#include "platform/taskbar.h"
#include "run/taskbar_progress.h"

namespace pavoline {
namespace {

// A step that waits is held by the session: it may be ended from inside an event that it handles.
using Held = std::shared_ptr<Installation>;

const char* CurrentStep(const Installation& installation) {
  const OrderedStep* step = StepAt(installation.step);
  return step == nullptr ? "" : step->name;
}

std::uint64_t Now(Ground& ground) { return ground.platform.environment.milliseconds(); }

void NoteEnd(Ground& ground, const Installation& installation, const char* how) {
  Journal(ground, std::string("step ") + how + ": " + CurrentStep(installation) + ", " +
                      std::to_string(Now(ground) - installation.stepBegan) + " ms");
}

// True when the installation may go on with its next step.
bool Passed(Session& session, const Held& held, const StepResult& result) {
  // Somebody may have ended it meanwhile.
  if (session.installation != held) return false;
  switch (result.kind) {
    case StepResult::kDone:
      NoteEnd(session, *held, "ended");
      ++held->step;
      return true;
    case StepResult::kFailed:
      NoteEnd(session, *held, "failed");
      EndInstallation(session, FailedIn(CurrentStep(*held), result.failure));
      return false;
    case StepResult::kWaits:
    case StepResult::kClosed:
      break;
  }
  return false;
}

// The end of a program wakes whoever follows it, so that nothing waits for the timer. A complete
// log takes one look for each phase.
void WakeAtEnd(Session& session, FollowedProgram& program, void (*tick)(Session&)) {
  program.whenEnded([&session, tick] {
    constexpr int kLooks = 4;
    const Held held = session.installation;
    if (!held) return;
    const std::size_t step = held->step;
    for (int look = 0; look < kLooks; ++look) {
      if (session.installation != held || held->step != step) return;
      tick(session);
    }
  });
}

void WakeAtEnd(Session& session, Installation& installation) {
  if (session.form.timer1.enabled()) WakeAtEnd(session, *installation.apply.tool, ApplyTick);
  if (session.form.timer2.enabled()) WakeAtEnd(session, *installation.ghost.tool, RestoreTick);
  if (session.form.timer3.enabled()) WakeAtEnd(session, *installation.drivers.tool, DriverTick);
}

// No timer may follow what was stopped; Timer2 would begin the start-up anew.
void EndStopped(Session& session) {
  session.stopping = false;
  Form1& form = session.form;
  for (Timer* timer : {&form.timer1, &form.timer2, &form.timer3}) timer->setEnabled(false);
  EndInstallation(session, {Outcome::kCancelled,
                            CurrentStep(*session.installation),
                            {"", "", kErrorMessage, ExitCode::kCancelled}});
}

// Runs steps until one waits or the installation is over.
void Proceed(Session& session, const Held& held) {
  for (const OrderedStep* step = StepAt(held->step); step != nullptr; step = StepAt(held->step)) {
    Journal(session, std::string("step: ") + step->name);
    held->insideStep = true;
    held->stepBegan = Now(session);
    const StepResult result = step->run(session, *held);
    held->insideStep = false;
    if (session.stopping && session.installation == held) return EndStopped(session);
    if (result.kind == StepResult::kWaits && session.installation == held) {
      WakeAtEnd(session, *held);
    }
    if (!Passed(session, held, result)) return;
  }
  EndInstallation(session, Completed(*held));
}

void Tick(Session& session, StepResult (*look)(Session&, Installation&)) {
  const Held held = session.installation;
  if (!held) return;
  if (Passed(session, held, look(session, *held))) Proceed(session, held);
}

void ClearProgress(Workplace& workplace) {
  workplace.form.progressBar1.setValue(0);
  CallW7TaskProgress(workplace);
  workplace.platform.taskbar.setProgressState(TaskbarState::kNone);
}

}  // namespace

void BeginInstallation(Session& session, Plan plan) {
  session.search.stop = true;
  const Held held = std::make_shared<Installation>();
  held->plan = std::move(plan);
  held->began = Now(session);
  held->activity = ActivityScope(session, Activity::kInstalling);
  session.installation = held;
  ControlStatus(session.form, session.texts, false);
  session.form.progressBar1.setMaximum(100);
  session.form.progressBar1.setValue(0);
  ShowStopButton(session.form, true);
  session.form.overallTimer.setEnabled(true);
  OverallTick(session);
  Proceed(session, held);
}

void OverallTick(Session& session) {
  const Held held = session.installation;
  if (!held) return;
  const ProgressBar& bar = session.form.progressBar1;
  const OrderedStep* step = StepAt(held->step);
  const std::uint64_t now = Now(session);
  Overall overall{PhasesOf(held->plan), {}, now - held->began, 0};
  if (step != nullptr && step->phase != nullptr) {
    overall.now = step->phase(*held, bar.value() * 100 / bar.maximum());
  }
  if (overall.now && !held->phasesBegan) held->phasesBegan = now;
  if (held->phasesBegan) overall.goneInPhases = now - *held->phasesBegan;
  session.form.overall.setText(OverallLine(session.texts, overall));
}

void HideOverall(Workplace& workplace) {
  workplace.form.overallTimer.setEnabled(false);
  workplace.form.overall.setText("");
  ShowStopButton(workplace.form, false);
}

void StopInstallation(Session& session) {
  if (!session.installation) return;
  Journal(session, "stopped");
  session.stopping = session.installation->insideStep;
  if (!session.stopping) EndStopped(session);
}

void ApplyTick(Session& session) {
  Tick(session, [](Session& s, Installation& i) { return ApplyMonitorTick(s, i.apply); });
}

void RestoreTick(Session& session) {
  Tick(session, [](Session& s, Installation& i) { return GhostTick(s, i.plan, i.ghost); });
}

void DriverTick(Session& session) {
  Tick(session, [](Session& s, Installation& i) { return DriverMonitorTick(s, i.drivers); });
}

void EndInstallation(Session& session, const Outcome& outcome) {
  Form1& form = session.form;
  session.exitCode = outcome.failure.code;
  // Over before it is told: a window closed over the message cancels nothing any more.
  const Held held = std::exchange(session.installation, nullptr);
  const bool ran = held != nullptr;
  if (ran) HideOverall(session);
  TakeLetterBack(session);
  CloseRecord(session, held.get(), outcome);
  if (ran) held->activity.leave();
  if (!outcome.failure.text.empty() && !form.unloaded()) {
    Message(session, outcome.failure.text, outcome.failure.kind, outcome.failure.title);
  }
  if (form.unloaded()) return;
  if (ran) {
    if (outcome.kind != Outcome::kDone && outcome.failure.code != ExitCode::kIncomplete) {
      ClearProgress(session);
    }
    ReturnToIdle(session);
  }
  if (session.commandLine.install) form.unload();
}

}  // namespace pavoline
