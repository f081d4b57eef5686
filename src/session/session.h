#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "form/form1.h"
#include "session/activity.h"
#include "session/exit_code.h"
#include "session/ghost_program.h"
#include "session/ground.h"
#include "session/options.h"
#include "session/plan.h"
#include "session/records.h"

// What one run of the program knows, in parts of their own. A step takes the part that it uses; the
// whole is for what decides about all of it.
namespace pavoline {

struct Installation;

// The ground and the window on it, in which a step shows itself and in which it may be stopped.
struct Workplace : Ground {
  Workplace(Platform& platformOfRun, Form1& formOfRun) : Ground(platformOfRun), form(formOfRun) {}

  Form1& form;
  bool stopping = false;  // the installation was stopped inside a step, which has not returned yet
  unsigned toolRuns = 0;  // so far; gives each run's output a file of its own
};

// The window is gone, or the installation was stopped: every wait for a program returns soon, and
// code of a step that resumes from one does nothing more.
bool Interrupted(const Workplace& workplace);

// What the machine's disks were found to hold.
struct Findings {
  std::vector<PartitionEntry> partitions;
  std::vector<PartitionEntry> bootRows, installRows;  // those offered in the choosers
  std::string lentLetter;  // drive given to a boot partition for this run, "S:"; empty: none
  PluginTable plugins;
};

// The source box and what stands behind its path.
struct SourceState {
  // Line for line what the edition list shows. Of the Ghost program, which stands there in place of
  // editions, only the texts are filled.
  std::vector<WimImageInfo> editions;
  std::optional<GhostProgram> ghost;  // there to restore the source, which is a Ghost image
  // Language for boot files when the edition names none (or the source has no editions).
  std::string fallbackLanguage;
  bool sourceFaultTold = false;  // why the source cannot be used has been shown

  SearchState search;
  SourceRun sourceRun;

  std::string mountedIsoDrive;        // "X:", empty: none
  std::string mountedIsoFile;         // the ISO file behind that drive
  std::vector<MountedIso> outerIsos;  // those that hold the mounted one, the innermost first
};

// What settings and menu ask of an installation, besides the window's controls.
struct Choices {
  InstallOptions options;
  bool minimizeGhost = true;
  bool advancedModeHide = false;
  ApplyChoice apply;         // chosen in the system menu
  std::string titleCaption;  // the window's plain title; an apply mode adds to it
};

// All of it, and what the program is doing.
struct Session : Workplace, Findings, SourceState, Choices {
  using Workplace::Workplace;

  // Changed by ActivityScope, besides the end of the start and that of the window.
  Activity activity = Activity::kStarting;
  std::function<void()> activityChanged;       // brings the menu in line
  std::shared_ptr<Installation> installation;  // the one that runs; install/installation.h
  ExitCode exitCode = ExitCode::kCancelled;
};

// May the program be asked for this now? In a dry run it changes no disk by any way.
bool May(const Session& session, Action action);

// Gives the window back to the person: captions, inputs, status line.
void ReturnToIdle(Workplace& workplace);

// Null: none is chosen.
const WimImageInfo* ChosenEdition(const Session& session);

// The language tag of the chosen edition, or the fallback; empty when neither is known. A tag that
// holds anything but letters, digits and hyphens counts as unknown: it comes out of an image and
// goes into command lines.
std::string EditionLanguage(const Session& session);

}  // namespace pavoline
