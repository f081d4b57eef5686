#include "install/start_checks.h"

#include "disk/lent_letter.h"
#include "disk/partitions.h"
#include "engine/ghost_restore.h"
#include "engine/wim_apply.h"
#include "form/text_numbers.h"
#include "install/named_values.h"
#include "install/target_safety.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "run/command_words.h"
#include "session/random_letter.h"
#include "session/split_image.h"

namespace pavoline {
namespace {

// Each check gives its refusal or nothing, and enters what it has found into the plan.
using Checked = std::optional<Refusal>;

Refusal Because(std::string text) { return {std::move(text)}; }

std::string SystemDrive(Ground& ground) {
  return ground.platform.environment.variable("SYSTEMDRIVE");
}

Checked RunningSystem(Session& session, Plan& plan) {
  const std::string system = SystemDrive(session);
  if (system.empty() || LowerAscii(plan.target.drive) != LowerAscii(system)) return {};
  return Because(String(session, kTextRunningSystem));
}

Checked SourceExists(Session& session, Plan& plan) {
  Files& files = session.platform.files;
  if (!files.exists(plan.source) || files.isFolder(plan.source)) {
    return Because(plan.source + " " + String(session, kTextSourceMissing));
  }
  plan.source = files.fullPath(plan.source);
  return {};
}

Checked EditionChosen(Session& session, Plan& plan) {
  if (!plan.editionName.empty()) return {};
  return Because(String(session, kTextNoEdition));
}

Checked GhostPresent(Session& session, Plan& plan) {
  if (!IsGhost(plan)) return {};
  const auto ghost = FindGhostProgram(session.platform.files, session.paths);
  if (!session.ghost || !ghost || !ghost->build) {
    return Refusal{GhostMissingMessage(session), ExitCode::kToolMissing};
  }
  plan.ghostProgram = ghost->path;
  plan.ghostBuild = *ghost->build;
  // The program's own list of arguments is cut at commas.
  if (Contains(plan.source + ShortPath(session, plan.source), ",")) {
    return Because(More(session, kMoreGhostComma));
  }
  return {};
}

Checked NamedValues(Session& session, Plan& plan) {
  const std::string refusal = ResolveNamedValues(session, plan);
  return refusal.empty() ? Checked() : Because(refusal);
}

// An EFI system partition without a letter gets one, if the person agrees.
Checked OfferLetter(Session& session, Plan& plan) {
  const auto boot = FindLetterlessBoot(session, plan.target.drive);
  if (!boot) return Because(ReplaceAll(String(session, kTextBootMissing), "%bp%", ""));
  const std::string question = ReplaceAll(
      ReplaceAll(More(session, kMoreLendLetter), "%ip%", plan.target.drive), "%bp%", boot->letter);
  if (!session.commandLine.silent && !session.commandLine.dryRun &&
      Message(session, question, kQuestionWarning, More(session, kMoreConfirm)) != kAnswerOk) {
    return Refusal{"", ExitCode::kCancelled};
  }
  if (session.form.unloaded()) return Refusal{};
  if (!LendLetter(session, *boot)) {
    return Because(ReplaceAll(String(session, kTextBootMissing), "%bp%", boot->letter));
  }
  plan.bootDrive = boot->letter;
  return {};
}

Checked BootPartitionExists(Session& session, Plan& plan) {
  const std::string& boot = plan.bootDrive;
  if (boot == plan.target.drive) return {};
  if (boot.empty()) return OfferLetter(session, plan);
  const bool lent = session.commandLine.dryRun && boot == session.lentLetter;
  if (!IsDrive(boot) || !(lent || session.platform.files.exists(boot))) {
    return Because(ReplaceAll(String(session, kTextBootMissing), "%bp%", boot));
  }
  if (SystemDrive(session).empty() || !SameDrive(boot, SystemDrive(session))) return {};
  return Because(ReplaceAll(More(session, kMoreBootIsSystem), "%bp%", boot));
}

// Two letters that tell this installation from others, drawn before the partitions are looked up.
void MarkInstallation(Workplace& workplace) {
  Environment& environment = workplace.platform.environment;
  environment.reseedRandom();
  std::string marker;
  for (int i = 0; i < 2; ++i) marker += RandomLetter(environment);
  workplace.form.marks.installation = marker;
}

// Looks the install partition up afresh.
Checked FindTarget(Session& session, Plan& plan) {
  MarkInstallation(session);
  if (!GetPart(session)) return Because(More(session, kMoreNoList));
  const auto target = FindVolume(session, plan.target.drive);
  if (!target) {
    return Because(ReplaceAll(String(session, kTextInstallMissing), "%ip%", plan.target.drive));
  }
  plan.target = *target;
  ShowPartitionFacts(session);
  return {};
}

Checked NothingElseIsLost(Session& session, Plan& plan) {
  const std::string loss = LossOnTarget(session, plan);
  return loss.empty() ? Checked() : Because(loss);
}

// What would stop the imaging program after the formatting.
Checked ToolAndImageUsable(Session& session, Plan& plan) {
  if (!IsGhost(plan) && !session.platform.files.exists(ToolPath(session.paths, Tool::kImaging))) {
    return Refusal{String(session, kTextToolMissing), ExitCode::kToolMissing};
  }
  if (session.platform.files.shortPath(plan.source).empty()) {
    return Because(plan.source + " " + String(session, kTextSourceMissing));
  }
  return {};
}

Checked SplitImageUsable(Session& session, Plan& plan) {
  if (!IsSplit(plan)) return {};
  Files& files = session.platform.files;
  // A system that keeps running from its image needs that in one file.
  if (plan.apply.options == kWimbootOption) return Because(More(session, kMoreSplitWimboot));
  const std::string lacking = LackingPart(files, plan.source);
  if (!lacking.empty()) {
    return Because(ReplaceAll(More(session, kMorePartLacks), "%f%", lacking));
  }
  plan.furtherParts = FurtherParts(files, plan.source);
  return ApplyLineFits(session, plan) ? Checked() : Because(More(session, kMoreTooManyParts));
}

// A template without its mark would lose its first character. One that is not there is passed over
// later, as is everything optional.
Checked AnswerFileMarked(Session& session, Plan& plan) {
  if (plan.answerFile.empty()) return {};
  const auto begin = session.platform.files.readPart(plan.answerFile, 0, 2);
  if (!begin || *begin == "\xEF\xBB") return {};
  return Because(String(session, kTextWrongEncoding));
}

bool ForGhost(Session&, const Plan& plan) { return IsGhost(plan); }
bool ForSplit(Session&, const Plan& plan) { return IsSplit(plan); }
bool HasAnswerFile(Session& session, const Plan& plan) {
  return !plan.answerFile.empty() && session.platform.files.exists(plan.answerFile);
}

// Of the command line, or with something of the machine in it.
bool NamesValues(Session& session, const Plan&) {
  const CommandLineOptions& line = session.commandLine;
  return !(line.computerName + line.driverFolder + line.answerFile).empty();
}

struct StartCheck {
  Checked (*run)(Session& session, Plan& plan);
  int passed;  // number of the text that says so
  bool (*concerns)(Session& session, const Plan& plan) = nullptr;  // null: every plan
};
constexpr StartCheck kChecks[] = {
    {RunningSystem, kMoreNotRunningSystem},
    {SourceExists, kMoreSourceThere},
    {EditionChosen, kMoreEditionChosen},
    {GhostPresent, kMoreGhostUsable, ForGhost},
    {NamedValues, kMoreNamedUsable, NamesValues},
    {BootPartitionExists, kMoreBootThere},
    {FindTarget, kMoreInstallListed},
    {NothingElseIsLost, kMoreNothingLost},
    {ToolAndImageUsable, kMoreToolUsable},
    {SplitImageUsable, kMoreSplitUsable, ForSplit},
    {AnswerFileMarked, kMoreAnswerFileMarked, HasAnswerFile},
};

}  // namespace

std::optional<Refusal> CheckStart(Session& session, Plan& plan, std::vector<std::string>& passed) {
  for (const StartCheck& check : kChecks) {
    const Checked refusal = check.run(session, plan);
    if (refusal) return refusal;
    if (check.concerns == nullptr || check.concerns(session, plan)) {
      passed.push_back(More(session, check.passed));
    }
  }
  return {};
}

}  // namespace pavoline
