#include "postinstall/plugins.h"

#include "engine/command_runner.h"
#include "engine/taskbar_progress.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr char kProgramEnd[] = ".exe ";  // what follows are parameters

bool HasParameters(const std::string& command) { return Contains(command, kProgramEnd); }

void Run(Session& session, const std::string& command) {
  ShellAndWait(session, command, ShowMode::kNormal);
}

// Runs a command with parameters, the drives put in; nothing when its program does not exist.
void RunWithParameters(Session& session, const std::string& command) {
  const auto end = command.find(kProgramEnd);
  const std::string program = command.substr(0, end) + ".exe";
  if (!session.platform.files.exists(program)) {
    Journal(session, "plug-in not found: " + program);
    return;
  }
  const std::string filled =
      ReplaceAll(ReplaceAll(command, "%ip%", session.form.text[kInstallPartition].text()), "%bp%",
                 session.form.text[kBootPartition].text());
  Run(session, Trim(filled));
}

// The chosen plug-in is a command with parameters, a file, or the name of a discovered plug-in.
void RunChosenPlugin(Session& session) {
  session.form.status.setText(String(session, kTextRunningPlugin));
  const std::string command = session.form.combo2.text();
  Journal(session, "plug-in " + command);
  if (HasParameters(command)) {
    RunWithParameters(session, command);
  } else if (!session.platform.files.exists(command)) {
    RunPlugin(session, command);
  } else {
    Run(session, Trim(command));
  }
}

void Announce(Session& session, const std::string& text) {
  if (session.commandLine.silent) return;
  Message(session, text, kInformationMessage, String(session, kTextInformation));
}

// The machine counts down while the question is shown; only OK lets it go on.
void Restart(Session& session) {
  const std::string tool =
      session.platform.environment.variable("windir") + "\\System32\\shutdown.exe";
  if (!session.platform.files.exists(tool)) {
    Announce(session, String(session, kTextNoShutdown));
    return;
  }
  ShellNoWait(session, "shutdown.exe -r -f -t 5", ShowMode::kHidden);
  if (session.commandLine.silent) return;
  const int answer =
      Message(session, String(session, kTextFinished) + "\n" + String(session, kTextRestarting),
              kQuestionWarning, String(session, kTextInformation));
  if (answer != kAnswerOk) ShellNoWait(session, "shutdown.exe -a", ShowMode::kHidden);
}

}  // namespace

void CallPlugin(Session& session) {
  Form1& form = session.form;
  if (form.check[kRunPlugin].ticked()) RunChosenPlugin(session);
  if (form.unloaded()) return;

  // The drivers may have left another maximum than percent.
  form.progressBar1.setMaximum(100);
  form.progressBar1.setValue(100);
  CallW7TaskProgress(session);
  Journal(session, "installation finished");

  if (form.check[kRestart].ticked()) {
    Restart(session);
  } else {
    Announce(session, String(session, kTextFinished));
  }
  if (form.unloaded()) return;
  ReturnToIdle(session);
  if (session.exitAfterInstallation) form.unload();
}

void RunPlugin(Session& session, const std::string& name) {
  const std::string* entry = session.plugins.find(name);
  if (!entry) return;
  const std::string command = *entry;
  if (HasParameters(command)) {
    RunWithParameters(session, command);
  } else if (session.platform.files.exists(command)) {
    Run(session, command);
  }
}

}  // namespace pavoline
