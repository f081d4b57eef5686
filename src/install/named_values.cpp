#include "install/named_values.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/machine_facts.h"

namespace pavoline {
namespace {

std::string ResolvePath(Ground& ground, std::string& path, const std::string& named) {
  if (path.empty()) return {};
  const MachineValue filled = WithMachineFacts(ground, path, ValueUse::kPath);
  if (!filled.untold.empty()) return UntoldText(ground, path, filled);
  const bool ofCommandLine = path == named;
  Files& files = ground.platform.files;
  path = files.fullPath(FromProgram(ground.paths, filled.text));
  if (!ofCommandLine || files.exists(path)) return {};
  return ReplaceAll(More(ground, kMoreNamedMissing), "%f%", path);
}

}  // namespace

std::string ResolveNamedValues(Session& session, Plan& plan) {
  const std::string& computer = session.options.computerName;
  const MachineValue name = WithMachineFacts(session, computer, ValueUse::kComputerName);
  // Only an answer file takes the name.
  if (!plan.answerFile.empty() && !name.untold.empty()) return UntoldText(session, computer, name);
  const CommandLineOptions& line = session.commandLine;
  const std::string refusal = ResolvePath(session, plan.answerFile, line.answerFile);
  return refusal.empty() ? ResolvePath(session, plan.driverFolder, line.driverFolder) : refusal;
}

}  // namespace pavoline
