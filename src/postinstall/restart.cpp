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

// The tool that announces a restart ends at once, unless it is slow to start. Until then nothing
// can be called off. False when it has failed.
bool Announced(Session& session, StartedProgram& announcing) {
  constexpr std::uint64_t kLongest = 1000 * kGraceSeconds;
  Environment& environment = session.platform.environment;
  const std::uint64_t began = environment.milliseconds();
  while (announcing.running() && environment.milliseconds() - began < kLongest) {
    announcing.waitHandlingEvents(std::chrono::milliseconds(100));
  }
  const auto code = announcing.exitCode();
  if (announcing.running() || !code || *code == 0) return true;
  Journal(session, "shutdown.exe has failed, exit code " + std::to_string(*code));
  return false;
}

// The machine counts down while the question is shown; only OK lets it go on. Left unanswered, the
// restart that was announced takes its course. False when none comes that was wanted.
bool RestartByShutdown(Session& session, const std::string& told) {
  Journal(session, "restart by shutdown.exe");
  const auto announcing = ShellNoWait(session, "shutdown.exe -r -f -t 5", ShowMode::kHidden);
  if (!announcing) return false;
  if (session.commandLine.silent) return Announced(session, *announcing);
  const std::string text = told + "\n" + String(session, kTextRestarting);
  const std::string& title = String(session, kTextInformation);
  const Answer answer =
      session.commandLine.install
          ? Message(session, text, kQuestionWarning, title, {kUnattendedSeconds, kAnswerOk})
          : Message(session, text, kQuestionWarning, title);
  const bool announced = Announced(session, *announcing);
  if (answer == kAnswerOk) return announced;
  if (announced) ShellNoWait(session, "shutdown.exe -a", ShowMode::kHidden);
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
