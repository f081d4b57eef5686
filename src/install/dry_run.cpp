#include "install/dry_run.h"

#include "install/installation.h"
#include "install/plan_text.h"
#include "install/rehearsal.h"
#include "platform/environment.h"
#include "platform/text.h"

namespace pavoline {
namespace {

void Tell(Ground& ground, const std::string& text) {
  for (const std::string& line : Split(text, "\r\n")) {
    if (!line.empty()) Journal(ground, "dry run: " + line);
  }
  ground.platform.environment.print(text);
}

}  // namespace

void EndDryRun(Session& session, const Plan& plan, const std::vector<std::string>& passed) {
  const Rehearsal rehearsal = Rehearse(session, plan);
  const std::string text = PlanText(session, plan, passed, rehearsal);
  Tell(session, text);
  if (!session.commandLine.install) ShowPlanText(session, text);
  if (!session.form.unloaded()) EndInstallation(session, rehearsal.outcome);
}

void TellChecks(Ground& ground, const std::vector<std::string>& passed) {
  Tell(ground, ChecksText(ground, passed));
}

}  // namespace pavoline
