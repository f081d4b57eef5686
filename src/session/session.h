#pragma once

#include <string>
#include <vector>

#include "form/form1.h"
#include "form/texts.h"
#include "platform/platform.h"
#include "session/options.h"
#include "session/records.h"

namespace pavoline {

// Where the program's own files lie and which build of the tools it uses. No trailing backslashes.
struct ProgramPaths {
  std::string appDir, appParentDir, binDir;
  std::string settingsPath;   // AppDir\Pavoline.ini
  std::string langFile;       // the language file in use
  std::string imageToolPath;  // wimlib-imagex.exe
  std::string imageToolArch;  // "x64" or "x86", the folder name of every tool
};

// What one run of the program knows. The steps of an installation are free functions that take
// it, read what earlier steps left and leave what later ones need.
struct Session {
  Session(Platform& platformOfRun, Form1& formOfRun) : platform(platformOfRun), form(formOfRun) {}

  Platform& platform;
  Form1& form;
  Texts texts;
  InstallOptions options;
  CommandLineOptions commandLine;
  ProgramPaths paths;
  float osVersion = 0;  // major.minor of the running system; 0 when unknown

  bool minimizeGhost = true;
  bool advancedModeHide = false;
  bool exitAfterInstallation = false;
  bool templateMarked = false;  // the chosen answer file has placeholders for this program

  std::string applyOptions;  // switch of the apply mode, for example "--compact=lzx"
  bool wimcopy = false;      // apply mode "Wimboot:WIMCOPY"
  std::string titleCaption;  // the window's plain title; an apply mode adds to it

  std::vector<PartitionEntry> partitions;
  std::vector<PartitionRow> bootRows, installRows;
  std::vector<WimImageInfo> editions;
  // Language for boot files when the edition names none (or the source has no editions).
  std::string fallbackLanguage;
  PluginTable plugins;
  SearchState search;

  InstallTarget target;
  ApplyProgress apply;
  GhostProgress ghost;
  std::string mountedIsoDrive;  // "X:", empty: none
  std::string mountedIsoFile;   // the ISO file behind that drive
  std::string sourceTextAtMount;
  SourceRun sourceRun;
  bool virtualDiskCommand = false;   // a virtual disk is being made or moved
  bool bootRepairRequested = false;  // for the duration of the menu's boot repair
  bool starting = false;             // Start's checks or questions are under way
  bool autoStarted = false;          // the unattended run has pressed Start
};

// String(n) of the language in use.
const std::string& String(const Session& session, int n);

// "%windir%\temp\" + name, computed afresh.
std::string TempFile(Session& session, const std::string& name);

// Shows a message and notes it in the journal; the answer is the platform's (1 = OK).
int Message(Session& session, const std::string& text, int flags, const std::string& title);

// Adds a line with the time to %windir%\temp\Pavoline.log, so that a person can find out
// afterwards what was done. A failure is ignored: no installation stops for its journal.
void Journal(Session& session, const std::string& text);

// Back to idle after an installation, a refusal or a failure.
void ReturnToIdle(Session& session);

// The language tag of the chosen edition, or the fallback; empty when neither is known.
std::string EditionLanguage(const Session& session);

}  // namespace pavoline
