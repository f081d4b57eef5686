#include "app/startup.h"

#include "app/command_line.h"
#include "app/main_buttons.h"
#include "app/runtime_files.h"
#include "config/language.h"
#include "config/settings_file.h"
#include "disk/partitions.h"
#include "engine/taskbar_progress.h"
#include "form/control_status.h"
#include "form/main_layout.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "source/image_search.h"
#include "ui/system_menu.h"
#include "version.h"

namespace pavoline {
namespace {

constexpr char kAnyPartition[] = "AUTO";
constexpr std::uint64_t kLargestJournal = 1 << 20;  // bytes kept from earlier runs

void FindFolders(Session& session) {
  ProgramPaths& paths = session.paths;
  paths.appDir = session.platform.environment.programFolder();
  paths.appParentDir = ParentFolder(paths.appDir);
  paths.binDir = paths.appDir + "\\Bin";
  paths.settingsPath = paths.appDir + "\\Pavoline.ini";
}

void StartJournal(Session& session) {
  Files& files = session.platform.files;
  const std::string path = TempFile(session, "Pavoline.log");
  if (files.size(path).value_or(0) > kLargestJournal) files.remove(path);
  std::string line = "Pavoline " PAVOLINE_VERSION_TEXT " started:";
  for (const std::string& argument : session.platform.environment.arguments()) {
    line += " " + argument;
  }
  Journal(session, line);
}

void ReadCommandLine(Session& session) {
  Environment& environment = session.platform.environment;
  environment.setThreadLocale(environment.systemLocale());
  const CommandLine line = ParseCommandLine(environment.arguments(), session.platform.text);
  if (line.locale) environment.setThreadLocale(*line.locale);
  session.commandLine = line.options;
  session.exitAfterInstallation = line.options.install;
}

// The build of the tools that suits the machine. A 64-bit pre-installation environment usually
// has no SysWOW64, but only there does the 64-bit program run.
bool ChooseImageTool(Session& session) {
  Environment& environment = session.platform.environment;
  Files& files = session.platform.files;
  const bool x64 =
      environment.is64BitProcess() || files.exists(environment.variable("windir") + "\\SysWOW64");
  const std::string arch = x64 ? "x64" : "x86";
  const std::string tool =
      session.paths.binDir + "\\wimlib-imagex\\" + arch + "\\wimlib-imagex.exe";
  if (!files.exists(tool)) {
    Message(session, String(session, kTextToolMissing), kInformationMessage,
            String(session, kTextInformation));
    return false;
  }
  session.paths.imageToolPath = tool;
  session.paths.imageToolArch = arch;
  return true;
}

void HideAdvancedMode(Session& session) {
  const Form1& form = session.form;
  const bool anyStep = form.check[kUseAnswerFile].ticked() || form.check[kAddDrivers].ticked() ||
                       form.check[kRunPlugin].ticked();
  if (anyStep || !session.advancedModeHide) return;
  session.form.status.setText(String(session, kTextStatusWide));
  ShowOptionFrames(session.form, false);
  session.form.setSize(kNarrowWidth, session.form.height());
}

// An unattended run is watched, not operated: only the edition may be changed, and Start is
// pressed by the auto-start check.
void LockForUnattended(Session& session) {
  Form1& form = session.form;
  ControlStatus(form, session.texts, false);
  form.combo[kEditions].setEnabled(true);
  form.command1[kStart].setText(String(session, kTextStart));
  form.busy = false;
}

void TakePartition(Session& session, const std::string& wanted, TextBox& field) {
  if (wanted.size() == 2 && session.platform.files.exists(wanted)) field.setText(wanted);
}

void ApplySwitches(Session& session) {
  const CommandLineOptions& line = session.commandLine;
  Form1& form = session.form;
  form.check[kRepairBoot].setValue(line.bootRepair ? 1 : 0);
  form.check[kRestart].setValue(line.reboot ? 1 : 0);
  TakePartition(session, line.bootPartition, form.text[kBootPartition]);
  TakePartition(session, line.installPartition, form.text[kInstallPartition]);
  // Without its switch an unattended run never formats, whatever the settings file says.
  form.check[kDoNotFormat].setValue(line.formatInstallPartition ? 0 : 1);
  // A source that is not there leaves the box locked; opened, it lets the auto-start check press
  // Start, which tells what is missing and ends the run instead of waiting for ever.
  if (!session.platform.files.exists(line.sourcePath)) form.combo1.setEnabled(true);
}

bool Matches(const TextBox& field, const std::string& wanted) {
  return wanted == kAnyPartition || field.text() == wanted;
}

}  // namespace

void InitializeProgram(Session& session) {
  FindFolders(session);
  RepairRuntimeFiles(session);
  session.form.setCaption("Pavoline");
}

bool LoadMainWindow(Session& session) {
  ReadCommandLine(session);
  LoadLanguage(session);
  LayOutMainWindow(session.form, session.platform.environment.threadLocale());
  Files& files = session.platform.files;
  const std::string temp = session.platform.environment.variable("windir") + "\\Temp";
  if (!files.exists(temp)) files.createFolder(temp);
  StartJournal(session);
  if (!ChooseImageTool(session)) return false;
  BuildSystemMenu(session);
  LoadIni(session);
  HideAdvancedMode(session);
  CreateTaskbarProgress(session);
  session.form.timer2.setEnabled(true);
  return true;
}

void StartupTick(Session& session) {
  Form1& form = session.form;
  if (session.commandLine.install) LockForUnattended(session);
  form.timer2.setEnabled(false);
  form.setTag("0");
  GetPart(session);
  if (form.unloaded()) return;
  FillPartitionList(session, PartitionListKind::kInstall);
  FillPartitionList(session, PartitionListKind::kBoot);
  form.setTag("1");
  DiscoverPlugins(session, session.options.pluginDir);
  if (form.unloaded()) return;
  session.platform.files.setCurrentFolder(session.paths.appDir);
  form.setTag("2");
  if (!session.commandLine.sourcePath.empty()) form.combo1.setText(session.commandLine.sourcePath);
  if (form.unloaded()) return;
  if (session.commandLine.install) ApplySwitches(session);
  form.timer4.setEnabled(true);
}

void AutoStartTick(Session& session) {
  Form1& form = session.form;
  // Start is pressed once: after a failure the run waits for a person instead of formatting again.
  if (!session.commandLine.install || !form.combo1.enabled() || session.autoStarted) return;
  session.autoStarted = true;
  if (Matches(form.text[kInstallPartition], session.commandLine.installPartition) &&
      Matches(form.text[kBootPartition], session.commandLine.bootPartition)) {
    Command1_Click(session, kStart);
    return;
  }
  Journal(session, "unattended run ended: the partitions are install " +
                       form.text[kInstallPartition].text() + ", boot " +
                       form.text[kBootPartition].text());
  form.unload();
}

}  // namespace pavoline
