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
#include "session/split_image.h"

namespace pavoline {
namespace {

StepResult Refused(Ground& ground, const std::string& text) {
  return StepResult::Failed({text, String(ground, kTextError), kErrorMessage, ExitCode::kRefused});
}

// Another set under the same name counts as lacking as well: its parts are not those of the plan.
std::string SplitPartLacking(Ground& ground, const Plan& plan) {
  Files& files = ground.platform.files;
  if (!IsSplit(plan)) return {};
  const bool same = FurtherParts(files, plan.source) == plan.furtherParts;
  return same ? LackingPart(files, plan.source) : plan.source;
}

// Time has passed since the confirmation: a disk may have come or gone, and the letter may stand
// for another volume.
StepResult CheckAgain(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  const bool listed = GetPart(session);
  if (Interrupted(session)) return StepResult::Closed();
  if (!listed || FindVolume(session, plan.target.drive) != plan.target) {
    Journal(session, "the volume behind " + plan.target.drive + " is not the confirmed one");
    return Refused(session, ReplaceAll(More(session, kMoreOtherVolume), "%ip%", plan.target.drive));
  }
  if (!session.platform.files.exists(plan.source)) {
    return Refused(session, plan.source + " " + String(session, kTextSourceMissing));
  }
  const std::string lacking = SplitPartLacking(session, plan);
  if (!lacking.empty()) {
    return Refused(session, ReplaceAll(More(session, kMorePartLacks), "%f%", lacking));
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
  if (Interrupted(session)) return StepResult::Closed();
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

StepResult AnswerFile(Session& session, Installation& installation) {
  const Plan& plan = installation.plan;
  if (HasSetupPasses(installation) && !plan.answerFile.empty()) WriteAnswerFile(session, plan);
  return StepResult::Done();
}

void DriversLack(Ground& ground, Installation& installation, int text) {
  installation.lacking.push_back(
      ReplaceAll(More(ground, text), "%f%", installation.plan.driverFolder));
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
void NameFailedDrivers(Ground& ground, Installation& installation) {
  constexpr std::size_t kMostNamed = 5;
  const std::vector<std::string>& failed = installation.drivers.failed;
  if (failed.empty() || failed.size() > kMostNamed) return;
  std::string names;
  for (const std::string& path : failed) names += (names.empty() ? "" : ", ") + FileName(path);
  installation.lacking.push_back(ReplaceAll(More(ground, kMoreDriversNamed), "%f%", names));
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
  return StepResult::Done();
}

std::optional<PhaseNow> Copying(const Installation& installation, int barPercent) {
  return IsCopied(installation.plan) ? std::optional(PhaseNow{Phase::kCopy, barPercent})
                                     : std::nullopt;
}

std::optional<PhaseNow> Applying(const Installation& installation, int barPercent) {
  if (IsGhost(installation.plan)) {
    const bool begun = installation.ghost.window != 0;
    return begun ? std::optional(PhaseNow{Phase::kRestore, barPercent}) : std::nullopt;
  }
  const ApplyProgress& done = installation.apply.progress;
  if (done.createPercent < 100) return PhaseNow{Phase::kCreate, done.createPercent};
  if (done.extractPercent < 100) return PhaseNow{Phase::kExtract, done.extractPercent};
  return PhaseNow{Phase::kMetadata, done.metadataPercent};
}

std::optional<PhaseNow> AddingDrivers(const Installation&, int barPercent) {
  return PhaseNow{Phase::kDrivers, barPercent};
}

// Without boot files a restart would lead nowhere.
StepResult Finish(Session& session, Installation& installation) {
  HideOverall(session);  // nothing runs behind the last message
  // The drivers may have left another maximum than percent.
  session.form.progressBar1.setMaximum(100);
  session.form.progressBar1.setValue(100);
  CallW7TaskProgress(session);
  TakeLetterBack(session);
  const std::string text = EndText(session, installation);
  const bool complete = installation.lacking.empty();
  Journal(session, complete ? "installation finished" : "installation incomplete: " + text);
  // The last moment before the machine may be gone.
  CloseRecord(session, &installation, Completed(installation));
  if (session.form.unloaded()) return StepResult::Closed();
  if (installation.plan.restart && !installation.bootFilesLacking) {
    RestartMachine(session, text);
  } else if (!session.commandLine.silent) {
    Message(session, text, complete ? kInformationMessage : kWarningMessage,
            String(session, kTextInformation));
  }
  return StepResult::Done();
}

template <int kText>
std::string Words(const Session& session, const Plan& plan) {
  return ReplaceAll(String(session, kText), "%ip%", plan.target.drive);
}

std::string ListingWords(const Session& session, const Plan&) {
  return More(session, kMoreListsAgain);
}

std::string EndWords(const Session& session, const Plan& plan) {
  return plan.restart ? WithoutAccessKey(session.texts.captions[kCaptionRestart])
                      : String(session, kTextFinished);
}

// Before these the checks of Start were passed and the person has confirmed (start.h).
constexpr OrderedStep kOrder[] = {
    {"check again", CheckAgain, nullptr, ListingWords},
    {"format", Format, nullptr, Words<kTextFormatting>},
    {"copy the image", Copy, Copying, Words<kTextCopyingImage>},
    {"apply", Apply, Applying, Words<kTextExtracting>},
    {"look at the system", LookAtSystem, nullptr, nullptr},
    {"boot files", WriteBoot, nullptr, Words<kTextBootFiles>},
    {"answer file", AnswerFile, nullptr, Words<kTextWritingAnswerFile>},
    {"drivers", Drivers, AddingDrivers, Words<kTextAddingDrivers>},
    {"judge the drivers", JudgeDrivers, nullptr, nullptr},
    {"plug-in", Plugin, nullptr, Words<kTextRunningPlugin>},
    {"end or restart", Finish, nullptr, EndWords},
};

}  // namespace

const OrderedStep* StepAt(std::size_t place) {
  return place < std::size(kOrder) ? &kOrder[place] : nullptr;
}

Outcome Completed(const Installation& installation) {
  const bool complete = installation.lacking.empty();
  return {complete ? Outcome::kDone : Outcome::kFailed,
          complete ? "" : "what follows the image",
          {"", "", kErrorMessage, complete ? ExitCode::kInstalled : ExitCode::kIncomplete}};
}

Outcome FailedIn(const char* step, const Failure& failure) {
  const bool refused = failure.code == ExitCode::kRefused;
  return {refused ? Outcome::kRefused : Outcome::kFailed, step, failure};
}

std::string EndText(Ground& ground, const Installation& installation) {
  if (installation.lacking.empty()) return String(ground, kTextFinished);
  std::string text = More(ground, kMoreIncomplete);
  for (const std::string& line : installation.lacking) text += "\n" + line;
  return text;
}

}  // namespace pavoline
