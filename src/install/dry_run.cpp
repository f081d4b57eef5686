#include "install/dry_run.h"

#include "install/installation.h"
#include "install/plan_text.h"
#include "install/rehearsal.h"
#include "platform/environment.h"
#include "platform/text.h"

namespace pavoline {
namespace {

void Tell(Session& session, const std::string& text) {
  for (const std::string& line : Split(text, "\r\n")) {
    if (!line.empty()) Journal(session, "dry run: " + line);
  }
  session.platform.environment.print(text);
}

}  // namespace

void EndDryRun(Session& session, const Plan& plan, const std::vector<std::string>& passed) {
  const Rehearsal rehearsal = Rehearse(session, plan);
  const std::string text = PlanText(session, plan, passed, rehearsal);
  Tell(session, text);
  if (!session.commandLine.install) ShowPlanText(session, text);
  if (!session.form.unloaded()) EndInstallation(session, rehearsal.outcome);
}

void TellChecks(Session& session, const std::vector<std::string>& passed) {
  Tell(session, ChecksText(session, passed));
}

}  // namespace pavoline
