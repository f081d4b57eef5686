#include "source/iso_mount.h"

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_services.h"
#include "run/command_runner.h"
#include "run/command_words.h"
#include "run/mid_between.h"
#include "session/activity_scope.h"
#include "source/image_search.h"
#include "source/image_source.h"
#include "source/source_wait.h"

namespace pavoline {
namespace {

constexpr char kJobName[] = "LoadISO";

std::string Variable(Ground& ground, const std::string& name) {
  return ground.platform.environment.variable(name);
}

void RunHidden(Session& session, const std::string& commandLine) {
  const SourceWait wait(session);
  ShellAndWait(session, commandLine, ShowMode::kHidden);
}

// While a source is read nothing else begins, but the window may go.
bool Overtaken(const Workplace& workplace) { return workplace.form.unloaded(); }

void InstallDriver(Session& session) {
  const std::string system = Variable(session, "windir") + "\\system32\\";
  Files& files = session.platform.files;
  if (files.exists(system + "imdisk.exe") && files.exists(system + "drivers\\imdisk.sys")) return;
  RunHidden(session, Variable(session, "ComSpec") +
                         " /c %SystemRoot%\\system32\\rundll32.exe setupapi.dll,"
                         "InstallHinfSection DefaultInstall 132 " +
                         EscapedForInterpreter(session.paths.appDir) + "\\Bin\\imdisk\\imdisk.inf");
}

std::string Mount(Session& session, const std::string& isoPath) {
  {
    const SourceWait wait(session);
    RunBatch(session, "imdisk.exe -a -m #: -f " + BatchPath(session, isoPath), kJobName);
  }
  const std::string path = TempFile(session, std::string(kJobName) + ".log");
  Files& files = session.platform.files;
  const std::string log = session.platform.text.fromAnsi(files.read(path).value_or(""));
  files.remove(path);
  return MountedDrive(log);
}

// Also a path that the box already shows (typed before the drive was there) is read now.
void TakeAsSource(Workplace& workplace, const std::string& path) {
  if (workplace.form.combo1.text() == path) workplace.form.combo1.setText("");
  workplace.form.combo1.setText(path);
}

// True when an image on the drive became the source.
bool FindImage(Session& session, const std::string& drive, const std::string& textBefore) {
  for (const SourceKind& kind : SourceKinds()) {
    if (kind.onMedium == nullptr || !session.platform.files.exists(drive + kind.onMedium)) continue;
    TakeAsSource(session, drive + kind.onMedium);
    return true;
  }
  // A search that was stopped earlier does not stop this one.
  const bool stoppedBefore = session.search.stop;
  session.search.stop = false;
  SearchImages(session, SearchMode::kMounted, drive);
  session.search.stop = session.search.stop || stoppedBefore;
  return session.form.combo1.text() != textBefore;
}

// False when the person chose none.
bool AskForImage(Session& session) {
  ReturnToIdle(session);
  session.sourceFaultTold = true;
  Message(session, String(session, kTextNoImageInIso), kInformationMessage,
          String(session, kTextInformation));
  // Nobody is there to choose a file for an unattended run.
  if (Overtaken(session) || session.commandLine.install) return false;
  const std::string path =
      session.platform.dialogs.openFile(ImageRequest(session, DialogPlace::kInsideMounted));
  if (path.empty() || Overtaken(session)) return false;
  session.form.combo1.setText(path);
  return true;
}

void GiveUp(Session& session, const std::string& drive) {
  Journal(session, "ISO given up, dismounting " + drive);
  if (Overtaken(session)) {
    ShellNoWait(session, DismountCommand(session, drive), ShowMode::kHidden);
  } else {
    RunHidden(session, DismountCommand(session, drive));
  }
}

void Replace(Session& session, const std::string& drive, const std::string& isoPath) {
  std::vector<std::string> old = {session.mountedIsoDrive};
  for (const MountedIso& iso : session.outerIsos) old.push_back(iso.drive);
  session.outerIsos.clear();
  for (const std::string& gone : old) {
    // The letter may have come free in another way and been given to the new drive.
    if (!gone.empty() && gone != drive) RunHidden(session, DismountCommand(session, gone));
  }
  session.mountedIsoDrive = drive;
  session.mountedIsoFile = isoPath;
}

void ReportFailure(Session& session, const std::string& isoPath) {
  Journal(session, "ISO not mounted: " + isoPath);
  ReturnToIdle(session);
  session.sourceFaultTold = true;
  Message(session, String(session, kTextMountFailed), kErrorMessage, String(session, kTextError));
}

void MountAndChoose(Session& session, const std::string& isoPath) {
  const std::string textBefore = session.form.combo1.text();
  const std::string driveBefore = session.mountedIsoDrive;
  InstallDriver(session);
  if (Overtaken(session)) return;
  const std::string drive = Mount(session, isoPath);
  if (drive.empty()) {
    if (!Overtaken(session)) ReportFailure(session, isoPath);
    return;
  }
  if (!session.platform.files.exists(drive)) return;
  Journal(session, "ISO mounted at " + drive + ": " + isoPath);
  if (Overtaken(session)) return GiveUp(session, drive);

  const bool found = FindImage(session, drive, textBefore);
  if (Overtaken(session) || (!found && !AskForImage(session))) return GiveUp(session, drive);
  // The image found was an ISO in the ISO: its own drive is the source's, this one holds it.
  if (session.mountedIsoDrive != driveBefore) {
    session.outerIsos.push_back({drive, isoPath});
    return;
  }
  Replace(session, drive, isoPath);
}

}  // namespace

void MountIso(Session& session, const std::string& isoPath) {
  if (Overtaken(session)) return;
  {
    const ActivityScope reading(session, Activity::kReadingSource);
    MountAndChoose(session, isoPath);
  }
  if (session.sourceRun.changed && !session.form.unloaded()) SourceChanged(session);
}

std::string MountedDrive(const std::string& log) {
  const std::string device = MidBetween(log, "Created device ", " ->", false);
  if (device.size() < 2 || device.back() != ':') return {};
  const std::string letter = LowerAscii(device.substr(device.size() - 2, 1));
  return letter >= "a" && letter <= "z" ? device.substr(device.size() - 2) : std::string();
}

std::string DismountCommand(Ground& ground, const std::string& drive) {
  return Variable(ground, "ComSpec") + " /c imdisk.exe -D -m " + drive;
}

}  // namespace pavoline
