#include "postinstall/plugins.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "run/command_runner.h"

namespace pavoline {
namespace {

constexpr char kProgramEnd[] = ".exe ";  // what follows are parameters

bool HasParameters(const std::string& command) {
  return command.starts_with('"') || Contains(command, kProgramEnd);
}

void Run(Session& session, const std::string& command, const std::string& recordedAs) {
  ShellAndWait(session, command, ShowMode::kNormal, {{}, recordedAs});
}

// The program at the head of a command: between quotes, or up to the first ".exe ".
std::string ProgramOf(const std::string& command) {
  if (command.starts_with('"')) return command.substr(1, command.find('"', 1) - 1);
  return command.substr(0, command.find(kProgramEnd)) + ".exe";
}

std::string WithDrives(const std::string& command, const PluginDrives& drives) {
  return ReplaceAll(ReplaceAll(command, "%ip%", drives.install), "%bp%", drives.boot);
}

// Runs a command with parameters, the drives put in; nothing when its program does not exist.
void RunWithParameters(Session& session, const std::string& command, const PluginDrives& drives) {
  const std::string program = ProgramOf(command);
  if (!session.platform.files.exists(program)) {
    Journal(session, "plug-in not found: " + program);
    return;
  }
  Run(session, Trim(WithDrives(command, drives)), RecordedPlugin(command));
}

}  // namespace

std::string RecordedPlugin(const std::string& command) {
  return HasParameters(command) ? ProgramOf(command) + " (parameters are not recorded)" : command;
}

// The chosen plug-in is a command with parameters, a file, or the name of a discovered plug-in.
void CallPlugin(Session& session, const std::string& command, const PluginDrives& drives) {
  session.form.status.setText(String(session, kTextRunningPlugin));
  if (HasParameters(command)) {
    RunWithParameters(session, command, drives);
  } else if (!session.platform.files.exists(command)) {
    RunPlugin(session, command, drives);
  } else {
    Run(session, Trim(command), "");
  }
}

void RunPlugin(Session& session, const std::string& name, const PluginDrives& drives) {
  const std::string* entry = session.plugins.find(name);
  if (!entry) return Journal(session, "plug-in not found: " + name.substr(0, name.find(' ')));
  const std::string command = *entry;
  if (HasParameters(command)) {
    RunWithParameters(session, command, drives);
  } else if (session.platform.files.exists(command)) {
    Run(session, command, "");
  }
}

}  // namespace pavoline
