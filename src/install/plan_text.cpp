#include "install/plan_text.h"

#include "disk/partitions.h"
#include "form/text_numbers.h"
#include "platform/text.h"
#include "postinstall/plugins.h"

namespace pavoline {
namespace {

constexpr char kLineEnd[] = "\r\n";

class TextLines {
 public:
  explicit TextLines(std::string text = "") : text_(std::move(text)) {}
  void line(const std::string& text) { text_ += text + kLineEnd; }
  // A paragraph begins with its heading.
  void heading(const std::string& text) { line((text_.empty() ? "" : kLineEnd) + text); }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

std::string Caption(const Ground& ground, int number) {
  return WithoutAccessKey(ground.texts.captions[static_cast<std::size_t>(number)]);
}

// "Answer file: D:\answers.xml", when there is one.
void AddValue(TextLines& lines, const std::string& caption, const std::string& value) {
  if (!value.empty()) lines.line(caption + " " + value);
}

std::string BootPartition(Session& session, const Plan& plan) {
  const bool lent = plan.bootDrive == session.lentLetter;
  const std::string facts =
      lent ? More(session, kMoreLentLetter) : DescribeVolume(session, plan.bootDrive);
  return plan.bootDrive + (facts.empty() ? "" : "  " + facts);
}

void AddPlan(Session& session, const Plan& plan, TextLines& lines) {
  const bool ghost = IsGhost(plan);
  const auto caption = [&](int number) { return Caption(session, number); };
  lines.heading(More(session, kMorePlan));
  AddValue(lines, caption(kCaptionImage), plan.source);
  AddValue(lines, caption(kCaptionEdition), std::to_string(plan.edition) + "  " + plan.editionName);
  AddValue(lines, caption(kCaptionInstallPartition),
           plan.target.drive + "  " + DescribeVolume(session, plan.target.drive));
  AddValue(lines, caption(kCaptionBootPartition), BootPartition(session, plan));
  lines.line(
      ReplaceAll(String(session, plan.format || ghost ? kTextConfirmFormat : kTextConfirmKeep),
                 "%ip_id%", plan.target.drive + " "));
  if (!ghost && !plan.apply.options.empty()) {
    lines.line(WithoutAccessKey(String(session, kTextApplyMode)) + ": " + plan.apply.options +
               (plan.apply.wimcopy ? ", WIMCOPY" : ""));
  }
  AddValue(lines, caption(kCaptionAnswerFile), plan.answerFile);
  AddValue(lines, caption(kCaptionDrivers), plan.driverFolder);
  AddValue(lines, caption(kCaptionPlugin), RecordedPlugin(plan.plugin));
  if (plan.repairBoot) lines.line(caption(kCaptionRepairBoot));
  if (plan.restart) lines.line(caption(kCaptionRestart));
}

void AddSteps(Ground& ground, const Rehearsal& rehearsal, TextLines& lines) {
  lines.heading(More(ground, kMoreCommands));
  for (const PlannedStep& step : rehearsal.steps) {
    if (!step.heading.empty()) lines.line(step.heading);
    for (const PlannedAct& act : step.acts) {
      lines.line("    " + (act.toldAs.empty() ? act.text : act.toldAs));
    }
  }
}

void AddEnd(Ground& ground, const Rehearsal& rehearsal, TextLines& lines) {
  const std::string& failure = rehearsal.outcome.failure.text;
  if (!failure.empty()) {
    lines.heading(More(ground, kMoreWouldEnd));
    lines.line(failure);
  }
  if (!rehearsal.missing.empty()) lines.heading(rehearsal.missing);
  lines.heading(ReplaceAll(More(ground, kMoreAssumed), "%v%", rehearsal.version));
}

}  // namespace

std::string ChecksText(const Ground& ground, const std::vector<std::string>& passed) {
  TextLines lines;
  if (ground.commandLine.dryRun) lines.heading(More(ground, kMoreDryRun));
  lines.heading(More(ground, kMorePassed));
  for (const std::string& check : passed) lines.line("- " + check);
  return lines.text();
}

std::string PlanText(Session& session, const Plan& plan, const std::vector<std::string>& passed,
                     const Rehearsal& rehearsal) {
  TextLines lines(ChecksText(session, passed));
  AddPlan(session, plan, lines);
  AddSteps(session, rehearsal, lines);
  AddEnd(session, rehearsal, lines);
  // Messages hold bare line feeds.
  return ReplaceAll(ReplaceAll(lines.text(), kLineEnd, "\n"), "\n", kLineEnd);
}

}  // namespace pavoline
