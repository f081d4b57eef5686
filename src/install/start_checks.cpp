#include "install/start_checks.h"

#include <optional>

#include "disk/lent_letter.h"
#include "disk/partitions.h"
#include "engine/ghost_restore.h"
#include "engine/wim_apply.h"
#include "form/text_numbers.h"
#include "install/dry_run.h"
#include "install/installation.h"
#include "install/named_values.h"
#include "install/plan_text.h"
#include "install/rehearsal.h"
#include "install/target_safety.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"
#include "postinstall/boot_configuration.h"
#include "run/command_words.h"
#include "session/random_letter.h"
#include "session/split_image.h"

namespace pavoline {
namespace {

// Why an installation cannot start. Each check gives its text or nothing, and enters what it has
// found into the plan.
struct Refusal {
  std::string text;  // empty: a person said no
  ExitCode code = ExitCode::kRefused;
};
using Checked = std::optional<Refusal>;
using Words = std::vector<std::string>;

Refusal Because(std::string text) { return {std::move(text)}; }

bool IsGhost(const Plan& plan) { return plan.kind == ImageKind::kGho; }

// Fixes what the window shows. Fields are read here and nowhere later.
Plan PlanFromWindow(Session& session) {
  const Form1& form = session.form;
  const auto optional = [&](CheckIndex box, const std::string& text) {
    return form.check[box].ticked() ? text : std::string();
  };
  Plan plan;
  plan.source = form.combo1.text();
  plan.kind = KindOf(plan.source);
  plan.edition = form.combo[kEditions].selected() + 1;
  plan.editionName = form.combo[kEditions].text();
  plan.language = EditionLanguage(session);
  plan.target.drive = form.text[kInstallPartition].text();
  plan.bootDrive = form.text[kBootPartition].text();
  if (IsDrive(plan.bootDrive)) plan.bootDrive.resize(2);
  plan.format = !form.check[kDoNotFormat].ticked();
  plan.apply = session.apply;
  plan.minimizeGhost = session.minimizeGhost;
  plan.repairBoot = form.check[kRepairBoot].ticked();
  plan.answerFile = optional(kUseAnswerFile, form.text[kAnswerFile].text());
  plan.driverFolder = optional(kAddDrivers, form.text[kDriverFolder].text());
  plan.plugin = optional(kRunPlugin, form.combo2.text());
  plan.restart = form.check[kRestart].ticked();
  return plan;
}

std::string SystemDrive(Session& session) {
  return session.platform.environment.variable("SYSTEMDRIVE");
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

// The program named in the details of the chosen line, "Path:.\Bin\Ghost\x64\Ghost.exe".
std::string ChosenGhost(const Session& session, const Plan& plan) {
  const auto& details = session.form.combo[kEditionDetails].items();
  const auto chosen = static_cast<std::size_t>(plan.edition - 1);
  if (chosen >= details.size()) return {};
  return ReplaceAll(details[chosen], "Path:.", session.paths.appDir);
}

Checked GhostPresent(Session& session, Plan& plan) {
  if (!IsGhost(plan)) return {};
  plan.ghostProgram = ChosenGhost(session, plan);
  const auto build = GhostBuild(session);
  if (plan.ghostProgram.empty() || !build) {
    return Refusal{GhostMissingMessage(session), ExitCode::kToolMissing};
  }
  plan.ghostBuild = *build;
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
void MarkInstallation(Session& session) {
  Environment& environment = session.platform.environment;
  environment.reseedRandom();
  std::string marker;
  for (int i = 0; i < 2; ++i) marker += RandomLetter(environment);
  session.form.command1[kStart].setTag(marker);
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
  if (!IsGhost(plan) && !session.platform.files.exists(session.paths.imageToolPath)) {
    return Refusal{String(session, kTextToolMissing), ExitCode::kToolMissing};
  }
  if (session.platform.files.shortPath(plan.source).empty()) {
    return Because(plan.source + " " + String(session, kTextSourceMissing));
  }
  return {};
}

Checked SplitImageUsable(Session& session, Plan& plan) {
  if (plan.kind != ImageKind::kSwm) return {};
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

// The question stands until it is answered, however often the plan is looked at meanwhile.
Checked Confirmed(Session& session, const Plan& plan, const Words& passed) {
  if (session.commandLine.silent) return {};
  const int number = plan.format || IsGhost(plan) ? kTextConfirmFormat : kTextConfirmKeep;
  std::string text = ReplaceAll(String(session, number), "%ip_id%", plan.target.drive + " ") +
                     "\r" + DescribeVolume(session, plan.target.drive) + "\r\r" +
                     String(session, kTextConfirmTail);
  if (!BootToolsPresent(session)) text += "\r\r" + More(session, kMoreNoBootTools);
  const MessageButton details{
      More(session, kMoreDetails),
      [&] { ShowPlanText(session, PlanText(session, plan, passed, Rehearse(session, plan))); }};
  const int answer =
      Message(session, text, kQuestionWarning, String(session, kTextInformation), details);
  return answer == kAnswerOk ? Checked() : Refusal{"", ExitCode::kCancelled};
}

bool ForGhost(Session&, const Plan& plan) { return IsGhost(plan); }
bool IsSplit(Session&, const Plan& plan) { return plan.kind == ImageKind::kSwm; }
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
    {SplitImageUsable, kMoreSplitUsable, IsSplit},
    {AnswerFileMarked, kMoreAnswerFileMarked, HasAnswerFile},
};

// Every check and the question. What was passed is noted in words.
Checked CheckAll(Session& session, Plan& plan, Words& passed) {
  for (const StartCheck& check : kChecks) {
    const Checked refusal = check.run(session, plan);
    if (session.form.unloaded()) return Refusal{};
    if (refusal) return refusal;
    if (check.concerns == nullptr || check.concerns(session, plan)) {
      passed.push_back(More(session, check.passed));
    }
  }
  if (session.commandLine.dryRun) return {};
  const Checked refusal = Confirmed(session, plan, passed);
  return session.form.unloaded() ? Refusal{} : refusal;
}

void NotePlan(Session& session, const Plan& plan) {
  const auto part = [](const char* what, const std::string& value) {
    return value.empty() ? std::string() : what + value;
  };
  Journal(session,
          "installing edition " + std::to_string(plan.edition) + " \"" + plan.editionName +
              "\" of " + plan.source + " on " + plan.target.drive + " (" +
              DescribeVolume(session, plan.target.drive) + ", volume " + plan.target.facts.name +
              "), boot " + plan.bootDrive + (plan.format ? ", formatting" : ", not formatting") +
              part(", answer file ", plan.answerFile) + part(", drivers ", plan.driverFolder) +
              (plan.plugin.empty() ? "" : ", plug-in") + (plan.restart ? ", restart" : ""));
  if (plan.answerFile.empty() && !session.commandLine.computerName.empty()) {
    Journal(session, "no answer file: the computer name is not used");
  }
}

Outcome AsOutcome(Session& session, const Refusal& refusal) {
  const bool cancelled = refusal.code == ExitCode::kCancelled;
  return {cancelled ? Outcome::kCancelled : Outcome::kRefused,
          "check",
          {refusal.text, String(session, kTextError), kErrorMessage, refusal.code}};
}

}  // namespace

void StartInstallation(Session& session) {
  // The checks handle events while they wait and ask; a second press meanwhile must not start a
  // second installation, and neither must one while an image is read.
  if (session.activity == Activity::kStarting || session.activity == Activity::kListing) {
    Message(session, String(session, kTextListNotReady), kInformationMessage, "Initializing...");
    return;
  }
  if (!May(session, Action::kStart)) return;
  Plan plan;
  Checked refusal;
  Words passed;
  const bool dry = session.commandLine.dryRun;
  {
    const ActivityScope checking(session, Activity::kChecking);
    plan = PlanFromWindow(session);
    refusal = CheckAll(session, plan, passed);
    if (!refusal && dry) EndDryRun(session, plan, passed);
    if (refusal && !session.form.unloaded()) {
      if (dry) TellChecks(session, passed);
      EndInstallation(session, AsOutcome(session, *refusal));
    }
  }
  if (session.form.unloaded()) return;
  if (refusal || dry) {
    session.form.focus(session.form.command1[kStart]);
    return;
  }
  NotePlan(session, plan);
  BeginInstallation(session, std::move(plan));
}

}  // namespace pavoline
