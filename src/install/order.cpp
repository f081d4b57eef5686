#include "install/order.h"

#include <cstddef>
#include <string>
#include <vector>

#include "disk/lent_letter.h"
#include "disk/partitions.h"
#include "engine/format_partition.h"
#include "engine/wimboot_copy.h"
#include "form/text_numbers.h"
#include "install/record.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "postinstall/answer_file.h"
#include "postinstall/boot_configuration.h"
#include "postinstall/plugins.h"
#include "postinstall/restart.h"
#include "postinstall/setup_ok.h"
#include "run/taskbar_progress.h"

namespace pavoline {
namespace {

bool IsGhost(const Plan& plan) { return plan.kind == ImageKind::kGho; }

StepResult Refused(Session& session, const std::string& text) {
  return StepResult::Failed({text, String(session, kTextError), kErrorMessage, ExitCode::kRefused});
}

// Time has passed since the confirmation: a disk may have come or gone, and the letter may stand
// for another volume.
StepResult CheckAgain(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  const bool listed = GetPart(session);
  if (session.form.unloaded()) return StepResult::Closed();
  if (!listed || FindVolume(session, plan.target.drive) != plan.target) {
    Journal(session, "the volume behind " + plan.target.drive + " is not the confirmed one");
    return Refused(session, ReplaceAll(More(session, kMoreOtherVolume), "%ip%", plan.target.drive));
  }
  if (!session.platform.files.exists(plan.source)) {
    return Refused(session, plan.source + " " + String(session, kTextSourceMissing));
  }
  if (!IsGhost(plan) && !ApplyFilesWritable(session)) {
    return Refused(session,
                   ReplaceAll(More(session, kMoreTempFile), "%f%", TempFile(session, "apply.bat")));
  }
  return StepResult::Done();
}

// The Ghost program overwrites the partition itself.
StepResult Format(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  if (IsGhost(plan) || !plan.format) return StepResult::Done();
  return FormatInstallPartition(session, plan);
}

// Only a WIM can back a system that runs from the copy; an ESD is applied from where it lies.
bool IsCopied(const Plan& plan) { return plan.apply.wimcopy && plan.kind == ImageKind::kWim; }

StepResult Copy(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  return IsCopied(plan) ? CopyImageForWimboot(session, plan) : StepResult::Done();
}

StepResult Apply(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  if (IsGhost(plan)) return GhoSetup(session, plan, installation.ghost);
  const std::string source = IsCopied(plan) ? WimbootCopyPath(plan) : plan.source;
  return WimSetup(session, plan, source, installation.apply);
}

StepResult LookAtSystem(Session& session, Installation& installation) {
  Journal(session, "image written");
  installation.applied = true;
  installation.appliedVersion = SetupOK(session, installation.plan);
  return StepResult::Done();
}

StepResult WriteBoot(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  const BootJob job{plan.bootDrive, plan.target.drive, plan.repairBoot, plan.language};
  const bool written = CallBootMbr(session, job, installation.appliedVersion);
  if (session.form.unloaded()) return StepResult::Closed();
  installation.bootFilesLacking = !written || !BootToolsPresent(session);
  if (installation.bootFilesLacking) {
    installation.lacking.push_back(
        ReplaceAll(More(session, kMoreNoBootFiles), "%bp%", plan.bootDrive));
  }
  return StepResult::Done();
}

bool HasSetupPasses(const Installation& installation) {
  return installation.appliedVersion >= kFirstVersionWithSetupPasses;
}

StepResult Answer(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  if (HasSetupPasses(installation) && !plan.answerFile.empty()) WriteAnswerFile(session, plan);
  return StepResult::Done();
}

void DriversLack(Session& session, Installation& installation, int text) {
  installation.lacking.push_back(
      ReplaceAll(More(session, text), "%f%", installation.plan.driverFolder));
}

StepResult Drivers(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  if (!HasSetupPasses(installation) || plan.driverFolder.empty()) return StepResult::Done();
  if (!session.platform.files.exists(plan.driverFolder)) {
    Journal(session, "no drivers: the folder is gone: " + plan.driverFolder);
    DriversLack(session, installation, kMoreDriversMissing);
    return StepResult::Done();
  }
  return StartDriverInjection(session, plan, installation.drivers);
}

// A few are named; the record has them all.
void NameFailedDrivers(Session& session, Installation& installation) {
  constexpr std::size_t kMostNamed = 5;
  const std::vector<std::string>& failed = installation.drivers.failed;
  if (failed.empty() || failed.size() > kMostNamed) return;
  std::string names;
  for (const std::string& path : failed) names += (names.empty() ? "" : ", ") + FileName(path);
  installation.lacking.push_back(ReplaceAll(More(session, kMoreDriversNamed), "%f%", names));
}

// Behind the drivers, whether they were waited for or could not be started at all.
StepResult JudgeDrivers(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  const bool wanted = HasSetupPasses(installation) && !plan.driverFolder.empty();
  if (wanted && !installation.drivers.complete &&
      session.platform.files.exists(plan.driverFolder)) {
    DriversLack(session, installation, kMoreDriversFailed);
    NameFailedDrivers(session, installation);
  }
  return StepResult::Done();
}

StepResult Plugin(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  if (!plan.plugin.empty()) CallPlugin(session, plan.plugin, {plan.target.drive, plan.bootDrive});
  return session.form.unloaded() ? StepResult::Closed() : StepResult::Done();
}

std::string EndText(Session& session, const Installation& installation) {
  if (installation.lacking.empty()) return String(session, kTextFinished);
  std::string text = More(session, kMoreIncomplete);
  for (const std::string& line : installation.lacking) text += "\n" + line;
  return text;
}

// Without boot files a restart would lead nowhere.
StepResult Finish(Session& session, Installation& installation) {
  // The drivers may have left another maximum than percent.
  session.form.progressBar1.setMaximum(100);
  session.form.progressBar1.setValue(100);
  CallW7TaskProgress(session);
  TakeLetterBack(session);
  const std::string text = EndText(session, installation);
  const bool complete = installation.lacking.empty();
  Journal(session, complete ? "installation finished" : "installation incomplete: " + text);
  // The last moment before the machine may be gone.
  CloseRecord(session, &installation, OutcomeOfLastStep(installation));
  if (session.form.unloaded()) return StepResult::Closed();
  if (installation.plan.restart && !installation.bootFilesLacking) {
    RestartMachine(session, text);
  } else if (!session.commandLine.silent) {
    Message(session, text, complete ? kInformationMessage : kWarningMessage,
            String(session, kTextInformation));
  }
  return session.form.unloaded() ? StepResult::Closed() : StepResult::Done();
}

// Before these the checks of Start were passed and the person has confirmed (start_checks.h).
constexpr OrderedStep kOrder[] = {
    {"check again", CheckAgain},
    {"format", Format},
    {"copy the image", Copy},
    {"apply", Apply},
    {"look at the system", LookAtSystem},
    {"boot files", WriteBoot},
    {"answer file", Answer},
    {"drivers", Drivers},
    {"judge the drivers", JudgeDrivers},
    {"plug-in", Plugin},
    {"end or restart", Finish},
};

}  // namespace

Outcome OutcomeOfLastStep(const Installation& installation) {
  if (installation.lacking.empty()) return {Outcome::kDone, "", {"", "", 0, ExitCode::kInstalled}};
  return {Outcome::kFailed, "what follows the image", {"", "", 0, ExitCode::kIncomplete}};
}

const OrderedStep* StepAt(std::size_t place) {
  return place < std::size(kOrder) ? &kOrder[place] : nullptr;
}

}  // namespace pavoline
