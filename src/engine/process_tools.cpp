#include "engine/command_runner.h"
#include "platform/text.h"

namespace pavoline {
namespace {

// A listed name in lower case, without what may follow its three-letter extension.
std::string ComparableName(const std::string& imageName) {
  const auto dot = imageName.find('.');
  const std::size_t kept = dot == std::string::npos ? 3 : dot + 4;
  return LowerAscii(imageName.substr(0, kept));
}

}  // namespace

void KillProcessByName(Session& session, const std::string& name) {
  for (const RunningProcess& process : session.platform.processes.list()) {
    if (ComparableName(process.imageName) != name) continue;
    Journal(session, "end process: " + process.imageName);
    session.platform.processes.terminate(process.id);
  }
}

bool IsProcessRunning(Session& session, const std::string& name) {
  for (const RunningProcess& process : session.platform.processes.list()) {
    if (ComparableName(process.imageName) == name) return true;
  }
  return false;
}

}  // namespace pavoline
