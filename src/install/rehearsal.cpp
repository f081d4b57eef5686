#include "install/rehearsal.h"

#include "form/form1.h"
#include "install/order.h"
#include "platform/text_services.h"

namespace pavoline {
namespace {

constexpr char kUnknownVersion[] = "10.0";

// From the image's own description; a Ghost image has none.
std::string VersionInImage(const SourceState& source, const Plan& plan) {
  const auto edition = static_cast<std::size_t>(plan.edition - 1);
  if (edition >= source.editions.size()) return kUnknownVersion;
  const WimImageInfo& info = source.editions[edition];
  if (info.major.empty() || info.minor.empty()) return kUnknownVersion;
  return info.major + "." + info.minor + (info.build.empty() ? "" : "." + info.build);
}

// As the lister would print it once more.
std::string PartitionList(const Session& session) {
  std::string list;
  for (const PartitionEntry& entry : session.partitions) list += entry.line + "\r\n";
  return session.platform.text.toAnsi(list);
}

void RunSteps(Session& session, Installation& installation, Rehearsal& rehearsal) {
  for (const OrderedStep* step = StepAt(installation.step); step != nullptr;
       step = StepAt(++installation.step)) {
    const std::string heading =
        step->heading == nullptr ? "" : step->heading(session, installation.plan);
    rehearsal.steps.push_back({heading, {}});
    const StepResult result = step->run(session, installation);
    if (rehearsal.steps.back().acts.empty()) rehearsal.steps.pop_back();
    if (result.kind == StepResult::kFailed) {
      rehearsal.outcome = FailedIn(step->name, result.failure);
      return;
    }
    // What a timer would learn of the program that the step has started.
    installation.drivers.complete = installation.drivers.tool.has_value();
  }
  rehearsal.outcome = Completed(installation);
  if (!installation.lacking.empty()) rehearsal.missing = EndText(session, installation);
}

}  // namespace

Rehearsal Rehearse(Session& session, const Plan& plan) {
  Rehearsal rehearsal;
  rehearsal.version = VersionInImage(session, plan);
  DryMachine machine(
      session.platform, TempFile(session, ""), {plan, PartitionList(session), rehearsal.version},
      [&](PlannedAct act) { rehearsal.steps.back().acts.push_back(std::move(act)); });
  Form1 form;
  Session dry(machine.platform(), form);
  static_cast<GroundFacts&>(dry) = session;
  static_cast<Findings&>(dry) = session;
  static_cast<SourceState&>(dry) = session;
  static_cast<Choices&>(dry) = session;
  Installation installation;
  installation.plan = plan;
  RunSteps(dry, installation, rehearsal);
  return rehearsal;
}

}  // namespace pavoline
