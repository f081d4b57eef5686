#include "engine/ghost_restore.h"

#include "engine/command_runner.h"
#include "engine/mid_between.h"
#include "engine/setback.h"
#include "engine/taskbar_progress.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/taskbar.h"
#include "platform/text.h"
#include "postinstall/setup_ok.h"

namespace pavoline {
namespace {

// The last build that is told its destination as a drive letter; later ones take disk:partition.
constexpr double kLastBuildByDrive = 10531;

// Ghost closes its window at the end, and the last percentage seen before that is often below
// 100. More than this counts as a completed restore.
constexpr int kEnoughPercent = 80;

std::string GhostFolder(const Session& session) {
  return session.paths.appDir + "\\Bin\\Ghost\\" + session.paths.imageToolArch;
}

// False for a program without a four-part version.
bool ReadBuild(Session& session, double& build) {
  const std::string path = GhostFolder(session) + "\\ghost.exe";
  const auto parts = Split(session.platform.files.fileVersion(path), ".");
  if (parts.size() < 4 || !IsNumeric(parts[3])) return false;
  build = LeadingNumber(parts[3]);
  return true;
}

// The program named in the details of the chosen line, "Path:.\Bin\Ghost\x64\Ghost.exe".
std::string ChosenProgram(const Session& session) {
  const auto& details = session.form.combo[kEditionDetails].items();
  const auto chosen = static_cast<std::size_t>(session.form.combo[kEditions].selected());
  if (chosen >= details.size()) return {};
  return ReplaceAll(details[chosen], "Path:.", session.paths.appDir);
}

std::string GhostCommand(Session& session, const std::string& program, double build) {
  const std::string destination = build <= kLastBuildByDrive
                                      ? "@os:" + session.form.text[kInstallPartition].text()
                                      : session.target.address;
  return ShortPath(session, program) +
         " -noide -clone,mode=pload,src=" + ShortPath(session, session.form.combo1.text()) +
         ":1,dst=" + destination + " -sure";
}

// Looks for Ghost's progress window, and hides the console that it runs in, which bears the
// program's short path as its title.
ForeignWindow FindGhostWindow(Session& session) {
  ForeignWindows& windows = session.platform.windows;
  const ForeignWindow found = windows.findByClass("GhostScreen");
  if (found != 0) session.ghost.window = found;

  const std::string title =
      ReplaceAll(ShortPath(session, GhostFolder(session) + "\\Ghost.exe"), "\"", "");
  const ForeignWindow console = title.empty() ? 0 : windows.findByTitle(title);
  if (console != 0) windows.hide(console);
  return found;
}

void AwaitGhost(Session& session) {
  if (FindGhostWindow(session) == 0) return;
  session.form.status.setText(String(session, kTextExtracting));
  session.form.progressBar1.setValue(0);
  session.ghost.minimizePending = session.minimizeGhost;
  session.form.timer2.setInterval(kGhostFollowInterval);
}

void ShowPercent(Session& session, const std::string& percent) {
  // A title may hold a dash and a percent sign of another kind.
  if (!IsNumeric(percent)) return;
  session.form.progressBar1.setValue(LeadingInteger16(percent));
  if (session.ghost.minimizePending) {
    session.ghost.minimizePending = false;
    session.platform.windows.minimize(session.ghost.window);
  }
  CallW7TaskProgress(session);
}

void EndRestore(Session& session) {
  Form1& form = session.form;
  form.timer2.setEnabled(false);
  Journal(session, "Ghost has ended at " + std::to_string(form.progressBar1.value()) + " percent");
  if (form.progressBar1.value() <= kEnoughPercent) {
    FailInstallation(session, String(session, kTextApplyFailed), String(session, kTextError));
    return;
  }
  form.progressBar1.setValue(100);
  SetupOK(session);
  if (!form.unloaded()) session.platform.taskbar.setProgressValue(100, 100);
}

void FollowGhost(Session& session) {
  const std::string title = session.platform.windows.title(session.ghost.window);
  const std::string percent = MidBetween(title, " - ", "%", false);
  if (!percent.empty()) {
    ShowPercent(session, percent);
  } else if (title.empty()) {
    EndRestore(session);
  }
}

}  // namespace

std::string GhostMissingMessage(Session& session) {
  return ReplaceAll(String(session, kTextGhostMissing), "%f%",
                    GhostFolder(session) + "\\ghost.exe");
}

void GhoSetup(Session& session) {
  Form1& form = session.form;
  const std::string program = ChosenProgram(session);
  double build = 0;
  if (program.empty() || !ReadBuild(session, build)) {
    RefuseInstallation(session, GhostMissingMessage(session), kErrorMessage,
                       String(session, kTextError));
    return;
  }
  form.progressBar1.setMaximum(100);
  ShellNoWait(session, GhostCommand(session, program, build), ShowMode::kHidden);
  form.timer2.setInterval(kGhostWaitInterval);
  form.timer2.setEnabled(true);
}

void GhostTick(Session& session) {
  if (session.form.unloaded()) return;
  switch (session.form.timer2.interval()) {
    case kGhostWaitInterval:
      AwaitGhost(session);
      break;
    case kGhostFollowInterval:
      FollowGhost(session);
      break;
    default:
      break;
  }
}

}  // namespace pavoline
