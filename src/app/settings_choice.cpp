#include "app/settings_choice.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/machine_facts.h"

namespace pavoline {

std::string ChooseSettingsFile(Ground& ground) {
  const std::string& named = ground.commandLine.settingsFile;
  if (named.empty()) return {};
  const MachineValue value = WithMachineFacts(ground, named, ValueUse::kPath);
  if (!value.untold.empty()) return UntoldText(ground, named, value);
  Files& files = ground.platform.files;
  // The program's folder is not the current one yet.
  const std::string path = FromProgram(ground.paths, value.text);
  const bool rooted = path.starts_with('\\') || path.find(':') == 1;
  const std::string full = files.fullPath(rooted ? path : ground.paths.appDir + "\\" + path);
  ground.paths.settingsPath = full;
  if (files.exists(full) && !files.isFolder(full)) return {};
  return ReplaceAll(More(ground, kMoreNoSettings), "%f%", full);
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
