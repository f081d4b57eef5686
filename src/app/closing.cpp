#include "app/closing.h"

#include "disk/lent_letter.h"
#include "form/text_numbers.h"
#include "install/order.h"
#include "platform/dialogs.h"
#include "run/command_runner.h"
#include "source/iso_mount.h"

namespace pavoline {
namespace {

const std::string& CloseQuestion(const Session& session) {
  switch (session.activity) {
    case Activity::kRepairingBoot:
      return More(session, kMoreCloseRepair);
    case Activity::kPreparingDisk:
      return More(session, kMoreClosePrepare);
    default:
      return String(session, kTextCloseQuestion);
  }
}

bool Agreed(Ground& ground, const std::string& question) {
  return ground.commandLine.install ||
         Message(ground, question, kQuestionError, String(ground, kTextCloseTitle)) == kAnswerOk;
}

void EndTools(Ground& ground) {
  for (const std::string& tool :
       {ToolName(Tool::kImaging), ToolName(Tool::kGhost), std::string("dism.exe")}) {
    KillProcessByName(ground, tool);
  }
}

}  // namespace

bool QueryUnload(Session& session) {
  const Activity asked = session.activity;
  switch (ClosingDuring(asked)) {
    case Closing::kFree:
      return true;
    case Closing::kWait:
      return false;
    case Closing::kAsk:
      break;
  }
  if (!Agreed(session, CloseQuestion(session))) return false;
  // The work may have come to its end while the question was open.
  if (session.activity == Activity::kInstalling) EndTools(session);
  return true;
}

void StopRequested(Session& session) {
  const auto asked = session.installation;
  if (!asked || !Agreed(session, More(session, kMoreStopQuestion))) return;
  // It may have come to its end while the question was open.
  if (session.installation != asked) return;
  EndTools(session);
  StopInstallation(session);
}

void Unload(Session& session) {
  for (Timer* timer : session.form.timers()) timer->setEnabled(false);
  if (const auto running = session.installation) {
    // Behind its record only the last message was open, or the restart under way.
    const bool over = !running->recorded.empty();
    EndInstallation(
        session,
        over ? Completed(*running)
             : Outcome{Outcome::kCancelled, "", {"", "", kErrorMessage, ExitCode::kCancelled}});
  }
  session.activity = Activity::kClosed;
  TakeLetterBack(session);
  if (!session.mountedIsoDrive.empty()) {
    session.outerIsos.insert(session.outerIsos.begin(), {session.mountedIsoDrive, ""});
    session.mountedIsoDrive.clear();
  }
  for (const MountedIso& iso : session.outerIsos) {
    ShellNoWait(session, DismountCommand(session, iso.drive), ShowMode::kHidden);
  }
  session.outerIsos.clear();
  Journal(session, "closed, exit code " + std::to_string(static_cast<int>(session.exitCode)));
}

}  // namespace pavoline
