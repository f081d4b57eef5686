#include "app/settings_choice.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/machine_facts.h"

namespace pavoline {

std::string ChooseSettingsFile(Session& session) {
  const std::string& named = session.commandLine.settingsFile;
  if (named.empty()) return {};
  const MachineValue value = WithMachineFacts(session, named, ValueUse::kPath);
  if (!value.untold.empty()) return UntoldText(session, named, value);
  Files& files = session.platform.files;
  // The program's folder is not the current one yet.
  const std::string path = FromProgram(session.paths, value.text);
  const bool rooted = path.starts_with('\\') || path.find(':') == 1;
  const std::string full = files.fullPath(rooted ? path : session.paths.appDir + "\\" + path);
  session.paths.settingsPath = full;
  if (files.exists(full) && !files.isFolder(full)) return {};
  return ReplaceAll(More(session, kMoreNoSettings), "%f%", full);
}

void TakeNamedValues(Session& session) {
  const CommandLineOptions& line = session.commandLine;
  if (!line.computerName.empty()) session.options.computerName = line.computerName;
  const auto take = [&](const std::string& value, OptionRowIndex index) {
    if (value.empty()) return;
    const OptionRow& row = session.form.optionRows[index];
    row.field.setText(value);
    row.box.setValue(1);
  };
  take(line.answerFile, kAnswerFileRow);
  take(line.driverFolder, kDriversRow);
}

}  // namespace pavoline
