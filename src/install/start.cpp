#include "install/start.h"

#include <optional>
#include <utility>

#include "disk/partitions.h"
#include "form/text_numbers.h"
#include "install/dry_run.h"
#include "install/installation.h"
#include "install/plan_text.h"
#include "install/rehearsal.h"
#include "install/start_checks.h"
#include "install/target_safety.h"
#include "platform/dialogs.h"
#include "platform/text.h"
#include "postinstall/boot_configuration.h"

namespace pavoline {
namespace {

// Fixes what the window shows. Fields are read here and nowhere later.
Plan PlanFromWindow(Session& session) {
  const Form1& form = session.form;
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
  plan.answerFile = form.optionRows[kAnswerFileRow].wanted();
  plan.driverFolder = form.optionRows[kDriversRow].wanted();
  plan.plugin = form.optionRows[kPluginRow].wanted();
  plan.restart = form.check[kRestart].ticked();
  return plan;
}

// The question stands until it is answered, however often the plan is looked at meanwhile.
std::optional<Refusal> Confirmed(Session& session, const Plan& plan,
                                 const std::vector<std::string>& passed) {
  if (session.commandLine.silent) return {};
  const int number = plan.format || IsGhost(plan) ? kTextConfirmFormat : kTextConfirmKeep;
  std::string text = ReplaceAll(String(session, number), "%ip_id%", plan.target.drive + " ") +
                     "\r" + DescribeVolume(session, plan.target.drive) + "\r\r" +
                     String(session, kTextConfirmTail);
  if (!BootToolsPresent(session)) text += "\r\r" + More(session, kMoreNoBootTools);
  const MessageButton details{
      More(session, kMoreDetailsButton),
      [&] { ShowPlanText(session, PlanText(session, plan, passed, Rehearse(session, plan))); }};
  const Answer answer =
      Message(session, text, kQuestionWarning, String(session, kTextInformation), details);
  if (answer == kAnswerOk) return {};
  return Refusal{"", ExitCode::kCancelled};
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

Outcome AsOutcome(Ground& ground, const Refusal& refusal) {
  const bool cancelled = refusal.code == ExitCode::kCancelled;
  return {cancelled ? Outcome::kCancelled : Outcome::kRefused,
          "check",
          {refusal.text, String(ground, kTextError), kErrorMessage, refusal.code}};
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
  std::optional<Refusal> refusal;
  std::vector<std::string> passed;
  const bool dry = session.commandLine.dryRun;
  {
    const ActivityScope checking(session, Activity::kChecking);
    plan = PlanFromWindow(session);
    refusal = CheckStart(session, plan, passed);
    if (!refusal && !dry) refusal = Confirmed(session, plan, passed);
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
