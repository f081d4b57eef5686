#include "app/start_checks.h"

#include <initializer_list>
#include <optional>
#include <vector>

#include "disk/partitions.h"
#include "engine/ghost_restore.h"
#include "engine/wim_apply.h"
#include "form/control_status.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/random_letter.h"

namespace pavoline {
namespace {

// Why an installation cannot start. Each check gives its text or nothing.
using Refusal = std::optional<std::string>;

bool SameDrive(const std::string& a, const std::string& b) {
  return LowerAscii(a) == LowerAscii(b);
}

std::string InstallDrive(const Session& session) {
  return session.form.text[kInstallPartition].text();
}

Refusal RunningSystem(Session& session) {
  const std::string system = session.platform.environment.variable("SYSTEMDRIVE");
  if (!SameDrive(InstallDrive(session), system) || system.empty()) return {};
  return String(session, kTextRunningSystem);
}

Refusal SourceExists(Session& session) {
  const std::string& source = session.form.combo1.text();
  if (session.platform.files.exists(source) && !session.platform.files.isFolder(source)) return {};
  return source + " " + String(session, kTextSourceMissing);
}

Refusal EditionChosen(Session& session) {
  if (!session.form.combo[kEditions].text().empty()) return {};
  return String(session, kTextNoEdition);
}

Refusal GhostPresent(Session& session) {
  const std::string placeholder =
      session.paths.imageToolArch + "\\" + String(session, kTextGhostMissingLine);
  const bool ghost = KindOf(session.form.combo1.text()) == ImageKind::kGho;
  if (!ghost || session.form.combo[kEditions].text() != placeholder) return {};
  return GhostMissingMessage(session);
}

Refusal BootPartitionExists(Session& session) {
  const std::string& boot = session.form.text[kBootPartition].text();
  if (boot == InstallDrive(session)) return {};
  if (!boot.empty() && session.platform.files.exists(boot)) return {};
  return ReplaceAll(String(session, kTextBootMissing), "%bp%", boot);
}

// Formatting the partition that holds the image would destroy both.
Refusal SourceSurvives(Session& session) {
  const bool ghost = KindOf(session.form.combo1.text()) == ImageKind::kGho;
  if (session.form.check[kDoNotFormat].ticked() && !ghost) return {};
  const auto drive = [](const std::string& path) { return path.substr(0, 2); };
  const std::string source = drive(session.form.combo1.text());
  const bool mounted =
      !session.mountedIsoDrive.empty() && SameDrive(source, session.mountedIsoDrive);
  const std::string holder = mounted ? drive(session.mountedIsoFile) : source;
  if (!SameDrive(holder, InstallDrive(session))) return {};
  return ReplaceAll(String(session, kTextSourceOnTarget), "%ip%", InstallDrive(session));
}

// Looks the install partition up afresh and keeps what the engine needs of it. A row counts by its
// drive, not by any text in it: a label may well hold another drive's name.
Refusal FindTarget(Session& session) {
  session.target = {};
  GetPart(session);
  for (const PartitionEntry& entry : session.partitions) {
    if (entry.drive().empty() || !SameDrive(entry.drive(), InstallDrive(session))) continue;
    session.target.address = entry.address();
    session.target.volumeLabel = entry.label();
    break;
  }
  if (!session.target.address.empty()) return {};
  return ReplaceAll(String(session, kTextInstallMissing), "%ip%", InstallDrive(session));
}

void MarkInstallation(Session& session) {
  Environment& environment = session.platform.environment;
  environment.reseedRandom();
  std::string marker;
  for (int i = 0; i < 2; ++i) marker += RandomLetter(environment);
  session.form.command1[kStart].setTag(marker);
}

bool Confirmed(Session& session) {
  if (session.commandLine.silent) return true;
  const bool keep = session.form.check[kDoNotFormat].ticked();
  const std::string question = String(session, keep ? kTextConfirmKeep : kTextConfirmFormat);
  const std::string text = ReplaceAll(question, "%ip_id%", InstallDrive(session) + " ") + "\r\r" +
                           String(session, kTextConfirmTail);
  return Message(session, text, kQuestionWarning, String(session, kTextInformation)) == kAnswerOk;
}

// Keeps what is being checked and confirmed from changing meanwhile: the checks handle events.
class InputLock {
 public:
  explicit InputLock(Form1& form) {
    for (Control* control : std::initializer_list<Control*>{
             &form.combo1, &form.search, &form.combo[kEditions], &form.text[kBootPartition],
             &form.text[kInstallPartition], &form.check[kDoNotFormat]}) {
      lock(*control);
    }
    for (int index : {kBrowseImage, kChooseBoot, kChooseInstall, kStart}) {
      lock(form.command1[index]);
    }
  }
  ~InputLock() {
    for (Control* control : locked_) control->setEnabled(true);
  }
  InputLock(const InputLock&) = delete;
  InputLock& operator=(const InputLock&) = delete;

 private:
  void lock(Control& control) {
    if (!control.enabled()) return;
    control.setEnabled(false);
    locked_.push_back(&control);
  }
  std::vector<Control*> locked_;
};

// True when every check passed. The marker is drawn before the partitions are looked up.
bool Allowed(Session& session) {
  using Check = Refusal (*)(Session&);
  static constexpr Check kChecks[] = {RunningSystem, SourceExists,        EditionChosen,
                                      GhostPresent,  BootPartitionExists, SourceSurvives,
                                      FindTarget};
  for (const Check check : kChecks) {
    if (check == FindTarget) MarkInstallation(session);
    const Refusal refusal = check(session);
    if (session.form.unloaded()) return false;
    if (!refusal) continue;
    Message(session, *refusal, kErrorMessage, String(session, kTextError));
    return false;
  }
  return Confirmed(session);
}

void HandOver(Session& session) {
  session.search.stop = true;
  Journal(session, "installing edition " +
                       std::to_string(session.form.combo[kEditions].selected() + 1) + " \"" +
                       session.form.combo[kEditions].text() + "\" of " +
                       session.form.combo1.text() + " on " + InstallDrive(session) + ", boot " +
                       session.form.text[kBootPartition].text());
  ControlStatus(session.form, session.texts, false);
  switch (KindOf(session.form.combo1.text())) {
    case ImageKind::kWim:
    case ImageKind::kEsd:
      WimSetup(session);
      break;
    case ImageKind::kGho:
      GhoSetup(session);
      break;
    default:
      ReturnToIdle(session);
  }
}

}  // namespace

void StartInstallation(Session& session) {
  // The checks handle events while they wait and ask; a second press meanwhile must not start a
  // second installation, and neither must one while an installation runs or an image is read.
  Form1& form = session.form;
  if (session.starting || form.busy || !form.combo1.enabled()) return;
  session.starting = true;
  bool allowed = false;
  {
    const InputLock lock(form);
    allowed = Allowed(session);
  }
  session.starting = false;
  if (form.unloaded()) return;
  if (allowed) {
    HandOver(session);
  } else if (session.commandLine.install) {
    form.unload();
  } else {
    form.focus(form.command1[kStart]);
  }
}

}  // namespace pavoline
