#include "postinstall/restart.h"

#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "run/command_runner.h"

namespace pavoline {
namespace {

constexpr int kGraceSeconds = 5;  // as shutdown.exe is told

std::string SystemTool(Ground& ground, const char* name) {
  return ground.platform.environment.variable("windir") + "\\System32\\" + name;
}

// The tool that announces a restart ends at once, unless it is slow to start. Until then nothing
// can be called off. False when it has failed.
bool Announced(Ground& ground, StartedProgram& announcing) {
  constexpr std::uint64_t kLongest = 1000 * kGraceSeconds;
  Environment& environment = ground.platform.environment;
  const std::uint64_t began = environment.milliseconds();
  while (announcing.running() && environment.milliseconds() - began < kLongest) {
    announcing.waitHandlingEvents(std::chrono::milliseconds(100));
  }
  const auto code = announcing.exitCode();
  if (announcing.running() || !code || *code == 0) return true;
  Journal(ground, "shutdown.exe has failed, exit code " + std::to_string(*code));
  return false;
}

// The machine counts down while the question is shown; only OK lets it go on. Left unanswered, the
// restart that was announced takes its course. False when none comes that was wanted.
bool RestartByShutdown(Ground& ground, const std::string& told) {
  Journal(ground, "restart by shutdown.exe");
  const auto announcing = ShellNoWait(ground, "shutdown.exe -r -f -t 5", ShowMode::kHidden);
  if (!announcing) return false;
  if (ground.commandLine.silent) return Announced(ground, *announcing);
  const std::string text = told + "\n" + String(ground, kTextRestarting);
  const std::string& title = String(ground, kTextInformation);
  const Answer answer = ground.commandLine.install ? Message(ground, text, kQuestionWarning, title,
                                                             {kUnattendedSeconds, kAnswerOk})
                                                   : Message(ground, text, kQuestionWarning, title);
  const bool announced = Announced(ground, *announcing);
  if (answer == kAnswerOk) return announced;
  if (announced) ShellNoWait(ground, "shutdown.exe -a", ShowMode::kHidden);
  return true;
}

// This one restarts at once: the program counts down itself.
void RestartByWpeutil(Ground& ground, const std::string& told, const std::string& tool) {
  if (!ground.commandLine.silent &&
      Message(ground, told + "\n" + More(ground, kMoreRestartsSoon), kQuestionWarning,
              String(ground, kTextInformation), {kGraceSeconds, kAnswerOk}) != kAnswerOk) {
    Journal(ground, "restart called off");
    return;
  }
  Journal(ground, "restart by wpeutil.exe");
  ShellNoWait(ground, tool + " reboot", ShowMode::kHidden);
}

}  // namespace

void RestartMachine(Ground& ground, const std::string& told) {
  Files& files = ground.platform.files;
  const bool there = files.exists(SystemTool(ground, "shutdown.exe"));
  if (there && RestartByShutdown(ground, told)) return;
  const std::string wpeutil = SystemTool(ground, "wpeutil.exe");
  if (files.exists(wpeutil)) return RestartByWpeutil(ground, told, wpeutil);
  Journal(ground, "no restart: neither shutdown.exe nor wpeutil.exe can be run");
  if (ground.commandLine.silent) return;
  const bool complete = told == String(ground, kTextFinished);
  Message(ground, complete ? String(ground, kTextNoShutdown) : told,
          complete ? kInformationMessage : kWarningMessage, String(ground, kTextInformation));
}

}  // namespace pavoline
