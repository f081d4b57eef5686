#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/ghost_restore.h"
#include "engine/wim_apply.h"
#include "postinstall/driver_injection.h"
#include "session/activity_scope.h"
#include "session/outcome.h"
#include "session/plan.h"
#include "session/session.h"

// The installation itself, from the confirmed plan to its one outcome.
namespace pavoline {

struct Installation {
  Plan plan;
  ActivityScope activity;
  std::size_t step = 0;     // place in the order of the one that runs
  bool insideStep = false;  // the step has not returned; it may wait for a program

  ApplyRun apply;
  GhostRun ghost;
  DriverRun drivers;
  float appliedVersion = 0;  // major.minor of the system that was applied
  bool applied = false;      // the image is on the target

  std::uint64_t began = 0, stepBegan = 0;    // milliseconds of the environment
  std::optional<std::uint64_t> phasesBegan;  // the first time that the bar was filled
  std::string recorded;                      // the outcome in the record; empty: not closed yet

  // What the image is there without, each as a line for a person.
  std::vector<std::string> lacking;
  bool bootFilesLacking = false;
};

// Begins with the first step of the order.
void BeginInstallation(Session& session, Plan plan);

// Ticks of Timer1, Timer2 and Timer3: let the step that waits look at its program, and go on with
// the next one when it has ended.
void ApplyTick(Session& session);
void RestoreTick(Session& session);
void DriverTick(Session& session);

// Shows below the bar how far the whole is, once a second; hides it where nothing runs.
void OverallTick(Session& session);
void HideOverall(Workplace& workplace);

// Stops the installation that runs: the window is idle again, or closed after an unattended run.
// A step that waits for a program returns first, which it does at once; programs are left as they
// are, so whoever calls ends those that must not go on.
void StopInstallation(Session& session);

// Ends an installation, or the attempt to start one: shows why it failed, gives the window back,
// and notes the exit code. An unattended run ends the program.
void EndInstallation(Session& session, const Outcome& outcome);

}  // namespace pavoline
