#include "postinstall/restart.h"

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "run/command_runner.h"

namespace pavoline {
namespace {

constexpr int kGraceSeconds = 5;  // as shutdown.exe is told

std::string SystemTool(Session& session, const char* name) {
  return session.platform.environment.variable("windir") + "\\System32\\" + name;
}

// A restart that has not been announced yet cannot be called off: the tool may be slow to start.
void CallOff(Session& session, StartedProgram& announcing) {
  constexpr std::uint64_t kLongest = 1000 * kGraceSeconds;
  Environment& environment = session.platform.environment;
  const std::uint64_t began = environment.milliseconds();
  while (announcing.running() && environment.milliseconds() - began < kLongest) {
    announcing.waitHandlingEvents(std::chrono::milliseconds(100));
  }
  ShellNoWait(session, "shutdown.exe -a", ShowMode::kHidden);
}

// The machine counts down while the question is shown; only OK lets it go on. Left unanswered, the
// restart that was announced takes its course. False when nothing was announced.
bool RestartByShutdown(Session& session, const std::string& told) {
  Journal(session, "restart by shutdown.exe");
  const auto announcing = ShellNoWait(session, "shutdown.exe -r -f -t 5", ShowMode::kHidden);
  if (!announcing) return false;
  if (session.commandLine.silent) return true;
  const std::string text = told + "\n" + String(session, kTextRestarting);
  const std::string& title = String(session, kTextInformation);
  const int answer = session.commandLine.install ? Message(session, text, kQuestionWarning, title,
                                                           {kUnattendedSeconds, kAnswerOk})
                                                 : Message(session, text, kQuestionWarning, title);
  if (answer != kAnswerOk) CallOff(session, *announcing);
  return true;
}

// This one restarts at once: the program counts down itself.
void RestartByWpeutil(Session& session, const std::string& told, const std::string& tool) {
  if (!session.commandLine.silent &&
      Message(session, told + "\n" + More(session, kMoreRestartsSoon), kQuestionWarning,
              String(session, kTextInformation), {kGraceSeconds, kAnswerOk}) != kAnswerOk) {
    Journal(session, "restart called off");
    return;
  }
  Journal(session, "restart by wpeutil.exe");
  ShellNoWait(session, tool + " reboot", ShowMode::kHidden);
}

}  // namespace

void RestartMachine(Session& session, const std::string& told) {
  Files& files = session.platform.files;
  const bool there = files.exists(SystemTool(session, "shutdown.exe"));
  if (there && RestartByShutdown(session, told)) return;
  const std::string wpeutil = SystemTool(session, "wpeutil.exe");
  if (files.exists(wpeutil)) return RestartByWpeutil(session, told, wpeutil);
  Journal(session, "no restart: neither shutdown.exe nor wpeutil.exe can be run");
  if (session.commandLine.silent) return;
  const bool complete = told == String(session, kTextFinished);
  Message(session, complete ? String(session, kTextNoShutdown) : told,
          complete ? kInformationMessage : kWarningMessage, String(session, kTextInformation));
}

}  // namespace pavoline
