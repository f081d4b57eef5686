#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "form/form1.h"
#include "form/texts.h"
#include "platform/dialogs.h"
#include "platform/platform.h"
#include "session/activity.h"
#include "session/exit_code.h"
#include "session/options.h"
#include "session/plan.h"
#include "session/records.h"

namespace pavoline {

// Where the program's own files lie and which build of the tools it uses. No trailing backslashes.
struct ProgramPaths {
  std::string appDir, appParentDir, binDir;
  std::string settingsPath;   // AppDir\Pavoline.ini, or the file that the command line names
  std::string journal;        // the file that took the last line; empty: none could
  std::string langFile;       // the language file in use
  std::string imageToolPath;  // wimlib-imagex.exe
  std::string imageToolArch;  // "x64" or "x86", the folder name of every tool
};

struct Installation;

// What one run of the program has found out and been told.
struct RunState {
  Texts texts;
  InstallOptions options;
  CommandLineOptions commandLine;
  ProgramPaths paths;
  float osVersion = 0;  // major.minor of the running system; 0 when unknown

  bool minimizeGhost = true;
  bool advancedModeHide = false;

  ApplyChoice apply;         // chosen in the system menu
  std::string titleCaption;  // the window's plain title; an apply mode adds to it

  std::vector<PartitionEntry> partitions;
  std::vector<PartitionRow> bootRows, installRows;
  std::vector<WimImageInfo> editions;
  // Language for boot files when the edition names none (or the source has no editions).
  std::string fallbackLanguage;
  PluginTable plugins;
  SearchState search;

  std::string mountedIsoDrive;        // "X:", empty: none
  std::string mountedIsoFile;         // the ISO file behind that drive
  std::vector<MountedIso> outerIsos;  // those that hold the mounted one, the innermost first
  std::string sourceTextAtMount;
  SourceRun sourceRun;
  bool sourceFaultTold = false;  // why the source cannot be used has been shown

  unsigned toolRuns = 0;  // so far; gives each run's output a file of its own

  std::string lentLetter;  // drive given to a boot partition for this run, "S:"; empty: none

  // Changed by ActivityScope, besides the end of the start and that of the window.
  Activity activity = Activity::kStarting;
  std::function<void()> activityChanged;       // brings the menu in line
  std::shared_ptr<Installation> installation;  // the one that runs; install/installation.h
  bool stopping = false;  // it was stopped inside a step, which has not returned yet
  ExitCode exitCode = ExitCode::kCancelled;
};

// What one run of the program knows, with the machine that it works on and its window. The steps
// of an installation are free functions that take it, read what earlier steps left and leave what
// later ones need.
struct Session : RunState {
  Session(Platform& platformOfRun, Form1& formOfRun) : platform(platformOfRun), form(formOfRun) {}

  Platform& platform;
  Form1& form;
};

// May the program be asked for this now? In a dry run it changes no disk by any way.
bool May(const Session& session, Action action);

// The window is gone, or the installation was stopped: every wait for a program returns soon, and
// code of a step that resumes from one does nothing more.
bool Interrupted(const Session& session);

// String(n) of the language in use.
const std::string& String(const Session& session, int n);
// More(n), a text beyond the numbered table.
const std::string& More(const Session& session, int n);

// "%windir%\temp\" + name, computed afresh.
std::string TempFile(Session& session, const std::string& name);

// Seconds that a message of an unattended run waits for somebody to read it.
inline constexpr int kUnattendedSeconds = 60;
inline constexpr int kSilentSeconds = 10;

// Shows a message and notes it in the journal with its answer. In an unattended run it closes by
// itself after a minute (ten seconds in a silent one); the answer is then the one that changes
// nothing, Cancel where there is a choice.
Answer Message(Session& session, const std::string& text, MessageKind kind,
               const std::string& title);
// The same with a limit of its own, which also holds for a person.
Answer Message(Session& session, const std::string& text, MessageKind kind,
               const std::string& title, const MessageLimit& limit);
// With a further button, and the usual limit.
Answer Message(Session& session, const std::string& text, MessageKind kind,
               const std::string& title, const MessageButton& further);

// Adds a line with the time to %windir%\temp\Pavoline.log, so that a person can find out
// afterwards what was done; where that folder is full or read-only, to a file of the same name
// beside the program. A failure is ignored: no installation stops for its journal.
void Journal(Session& session, const std::string& text);

// Gives the window back to the person: captions, inputs, status line.
void ReturnToIdle(Session& session);

// The language tag of the chosen edition, or the fallback; empty when neither is known. A tag that
// holds anything but letters, digits and hyphens counts as unknown: it comes out of an image and
// goes into command lines.
std::string EditionLanguage(const Session& session);

// A path of the settings or of a row: "%App.Path%" and ".\\" stand for the program's folder.
std::string FromProgram(const Session& session, const std::string& path);

}  // namespace pavoline
