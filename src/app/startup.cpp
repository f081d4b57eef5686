#include "app/startup.h"

#include <algorithm>

#include "app/command_line.h"
#include "app/hot_keys.h"
#include "app/main_buttons.h"
#include "app/runtime_files.h"
#include "app/settings_choice.h"
#include "config/language.h"
#include "config/settings_file.h"
#include "disk/lent_letter.h"
#include "disk/partitions.h"
#include "form/control_status.h"
#include "form/main_layout.h"
#include "form/text_numbers.h"
#include "install/installation.h"
#include "install/record.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "run/command_runner.h"
#include "run/taskbar_progress.h"
#include "session/activity_scope.h"
#include "session/machine_facts.h"
#include "source/image_search.h"
#include "ui/system_menu.h"
#include "version.h"

namespace pavoline {
namespace {

constexpr char kAnyPartition[] = "AUTO";
constexpr std::uint64_t kLargestJournal = 1 << 20;  // bytes kept from earlier runs

void FindFolders(Ground& ground) {
  ProgramPaths& paths = ground.paths;
  paths.appDir = ground.platform.environment.programFolder();
  paths.appParentDir = ParentFolder(paths.appDir);
  paths.binDir = paths.appDir + "\\Bin";
  paths.settingsPath = paths.appDir + "\\Pavoline.ini";
}

void StartJournal(Ground& ground) {
  Files& files = ground.platform.files;
  const std::string path = TempFile(ground, "Pavoline.log");
  if (files.size(path).value_or(0) > kLargestJournal) files.remove(path);
  std::string line = "Pavoline " PAVOLINE_VERSION_TEXT " started:";
  // The first is the program's own path.
  const auto arguments = ground.platform.environment.arguments();
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    line += " " + (i == 0 ? arguments[i] : RecordedArgument(arguments[i], ground.platform.text));
  }
  Journal(ground, line);
  const MachineFacts facts = FactsOfMachine(ground);
  const auto told = [](const std::string& fact) { return fact.empty() ? "unknown" : fact; };
  Journal(ground, "machine: serial number " + told(facts.serial) + ", model " + told(facts.model) +
                      ", network address " + told(facts.mac));
}

void ReadCommandLine(Session& session) {
  Environment& environment = session.platform.environment;
  session.language = environment.setThreadLocale(environment.systemLocale());
  const CommandLine line = ParseCommandLine(environment.arguments(), session.platform.text);
  if (line.locale) session.language = environment.setThreadLocale(*line.locale);
  session.commandLine = line.options;
}

// Always false: the process ends.
bool RefuseToStart(Session& session, const Failure& failure) {
  session.exitCode = failure.code;
  CloseRecord(session, nullptr, {Outcome::kRefused, "start", failure});
  Message(session, failure.text, failure.kind, failure.title);
  return false;
}

// The build of the tools that suits the machine. A 64-bit pre-installation environment usually
// has no SysWOW64, but only there does the 64-bit program run.
bool ChooseImageTool(Session& session) {
  Environment& environment = session.platform.environment;
  Files& files = session.platform.files;
  const bool x64 =
      environment.is64BitProcess() || files.exists(environment.variable("windir") + "\\SysWOW64");
  session.paths.imageToolArch = x64 ? "x64" : "x86";
  if (!files.exists(ToolPath(session.paths, Tool::kImaging))) {
    return RefuseToStart(session,
                         {String(session, kTextToolMissing), String(session, kTextInformation),
                          kInformationMessage, ExitCode::kToolMissing});
  }
  return true;
}

void HideAdvancedMode(Session& session) {
  const Form1& form = session.form;
  const bool anyStep =
      std::ranges::any_of(form.optionRows, [](const OptionRow& row) { return row.box.ticked(); });
  if (anyStep || !session.advancedModeHide) return;
  session.form.status.setText(String(session, kTextStatusWide));
  ShowOptionFrames(session.form, false);
  session.form.setSize(kNarrowWidth, session.form.height());
}

// Where the whole window has no room it starts as F2 would make it.
void StartNarrowOnSmallScreen(Session& session) {
  const int room = session.platform.environment.screenRoom().width;
  if (session.form.width() == kWideWidth && room < kWideWidth) ToggleWidth(session);
}

// An unattended run is watched, not operated: only the edition may be changed, and Start is
// pressed by the auto-start check.
void LockForUnattended(Workplace& workplace) {
  Form1& form = workplace.form;
  ControlStatus(form, workplace.texts, false);
  form.combo[kEditions].setEnabled(true);
  form.command1[kStart].setText(String(workplace, kTextStart));
}

void TakePartition(Ground& ground, const std::string& wanted, TextBox& field) {
  if (wanted.size() == 2 && ground.platform.files.exists(wanted)) field.setText(wanted);
}

void ApplySwitches(Session& session) {
  const CommandLineOptions& line = session.commandLine;
  Form1& form = session.form;
  form.check[kRepairBoot].setValue(line.bootRepair ? 1 : 0);
  form.check[kRestart].setValue(line.reboot ? 1 : 0);
  TakePartition(session, line.bootPartition, form.text[kBootPartition]);
  TakePartition(session, line.installPartition, form.text[kInstallPartition]);
  // What the list preselected went by another install partition.
  if (line.bootPartition == kAnyPartition) {
    form.text[kBootPartition].setText("");
    FillPartitionList(session, PartitionListKind::kBoot);
  }
  // Without its switch an unattended run never formats, whatever the settings file says. A Ghost
  // image has taken the choice away, since a restore always overwrites.
  if (SourceKindOf(form.combo1.text()).installedBy != InstalledBy::kGhostProgram) {
    form.check[kDoNotFormat].setValue(line.formatInstallPartition ? 0 : 1);
  }
  // A source that is not there leaves the box locked; opened, it lets the auto-start check press
  // Start, which tells what is missing and ends the run instead of waiting for ever.
  if (!session.platform.files.exists(line.sourcePath)) form.combo1.setEnabled(true);
}

// With "AUTO" a boot partition that lacks a letter only gets one by itself.
void LendLetterToAuto(Session& session) {
  if (session.commandLine.bootPartition != kAnyPartition) return;
  const std::string& boot = session.form.text[kBootPartition].text();
  const auto letterless = FindLetterlessBoot(session, session.form.text[kInstallPartition].text());
  if (!letterless) return;
  Journal(session,
          "the boot partition of the install partition's disk has no letter; preselected: " + boot);
  LendLetter(session, *letterless);
}

bool Matches(const TextBox& field, const std::string& wanted) {
  return wanted == kAnyPartition || field.text() == wanted;
}

void Started(Session& session) {
  session.activity = Activity::kIdle;
  if (session.activityChanged) session.activityChanged();
}

}  // namespace

void InitializeProgram(Workplace& workplace) {
  FindFolders(workplace);
  TrustSystemFoldersOnly(workplace);
  RepairRuntimeFiles(workplace);
  workplace.form.setCaption("Pavoline");
}

bool LoadMainWindow(Session& session) {
  ReadCommandLine(session);
  LoadLanguage(session);
  LayOutMainWindow(session.form, ReadWidths(session.texts.options[kOptionWidths]));
  Files& files = session.platform.files;
  const std::string temp = session.platform.environment.variable("windir") + "\\Temp";
  if (!files.exists(temp)) files.createFolder(temp);
  StartJournal(session);
  if (!ChooseImageTool(session)) return false;
  if (const std::string refusal = ChooseSettingsFile(session); !refusal.empty()) {
    return RefuseToStart(session,
                         {refusal, String(session, kTextError), kErrorMessage, ExitCode::kRefused});
  }
  BuildSystemMenu(session);
  LoadIni(session);
  TakeNamedValues(session);
  HideAdvancedMode(session);
  StartNarrowOnSmallScreen(session);
  CreateTaskbarProgress(session);
  session.form.timer2.setEnabled(true);
  return true;
}

void StartupTick(Session& session) {
  Form1& form = session.form;
  const bool unattended = session.commandLine.install;
  if (unattended) LockForUnattended(session);
  form.timer2.setEnabled(false);
  form.marks.startupStage = 0;
  GetPart(session);
  FillPartitionList(session, PartitionListKind::kInstall);
  FillPartitionList(session, PartitionListKind::kBoot);
  ShowPartitionFacts(session);
  form.marks.startupStage = 1;
  DiscoverPlugins(session, session.options.pluginDir);
  if (form.unloaded()) return;
  session.platform.files.setCurrentFolder(session.paths.appDir);
  form.marks.startupStage = 2;
  if (!session.commandLine.sourcePath.empty()) form.combo1.setText(session.commandLine.sourcePath);
  if (form.unloaded()) return;
  if (unattended) {
    ApplySwitches(session);
    LendLetterToAuto(session);
  } else {
    Started(session);
  }
  form.timer4.setEnabled(true);
  // So that the source box's list is filled; an unattended run has its source.
  if (!unattended && SearchDrives(session)) {
    const bool wide = form.width() == kWideWidth;
    form.status.setText(String(session, wide ? kTextStatusWide : kTextStatusNormal));
  }
}

void AutoStartTick(Session& session) {
  Form1& form = session.form;
  // Only until Start has been pressed once, and not while the source is still being read.
  if (!session.commandLine.install || session.activity != Activity::kStarting ||
      !form.combo1.enabled()) {
    return;
  }
  Started(session);
  const auto refuse = [&](const std::string& text, ExitCode code) {
    // The record's copy is waited for: nothing may begin meanwhile.
    const ActivityScope ending(session, Activity::kChecking);
    EndInstallation(
        session,
        {Outcome::kRefused, "start", {text, String(session, kTextError), kErrorMessage, code}});
  };
  // One failure, one message: why the source cannot be used has been told.
  if (session.sourceFaultTold) return refuse("", ExitCode::kRefused);
  const std::string& install = form.text[kInstallPartition].text();
  const std::string& boot = form.text[kBootPartition].text();
  if (Matches(form.text[kInstallPartition], session.commandLine.installPartition) &&
      Matches(form.text[kBootPartition], session.commandLine.bootPartition)) {
    Command1_Click(session, kStart);
    return;
  }
  refuse(ReplaceAll(ReplaceAll(More(session, kMoreOtherPartitions), "%ip%", install), "%bp%", boot),
         ExitCode::kOtherPartitions);
}

}  // namespace pavoline
