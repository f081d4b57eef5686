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

// A folder, also as "Folder\.", is no program, though it exists.
bool IsFile(Ground& ground, const std::string& path) {
  Files& files = ground.platform.files;
  return files.exists(path) && !files.isFolder(path);
}

void Run(Workplace& workplace, const std::string& command, const std::string& recordedAs) {
  ShellAndWait(workplace, command, ShowMode::kNormal, {{}, recordedAs});
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
void RunWithParameters(Workplace& workplace, const std::string& command,
                       const PluginDrives& drives) {
  const std::string program = ProgramOf(command);
  if (!IsFile(workplace, program)) {
    Journal(workplace, "plug-in not found: " + program);
    return;
  }
  Run(workplace, Trim(WithDrives(command, drives)), RecordedPlugin(command));
}

}  // namespace

std::string RecordedPlugin(const std::string& command) {
  return HasParameters(command) ? ProgramOf(command) + " ..." : command;
}

// The chosen plug-in is a command with parameters, a file, or the name of a discovered plug-in.
void CallPlugin(Session& session, const std::string& command, const PluginDrives& drives) {
  session.form.status.setText(String(session, kTextRunningPlugin));
  if (HasParameters(command)) {
    RunWithParameters(session, command, drives);
  } else if (!IsFile(session, command)) {
    RunPlugin(session, command, drives);
  } else {
    Run(session, Trim(command), "");
  }
}

void RunPlugin(Session& session, const std::string& name, const PluginDrives& drives) {
  const std::string* entry = session.plugins.find(name);
  const std::string lost = "plug-in not found: " + name.substr(0, name.find(' '));
  if (!entry) return Journal(session, lost);
  const std::string command = *entry;
  if (HasParameters(command)) {
    RunWithParameters(session, command, drives);
  } else if (IsFile(session, command)) {
    Run(session, command, "");
  } else {
    Journal(session, lost);
  }
}

}  // namespace pavoline
