#include "install/target_safety.h"

#include "form/text_numbers.h"
#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {
namespace {

// "D:" of a path; a relative one is worked out first.
std::string DriveOf(Ground& ground, const std::string& path) {
  return ground.platform.files.fullPath(path).substr(0, 2);
}

// The file that really holds the image: an ISO, where the path lies on a drive mounted from one.
std::string OutermostFile(Session& session, std::string path) {
  std::vector<MountedIso> isos = session.outerIsos;
  isos.insert(isos.begin(), {session.mountedIsoDrive, session.mountedIsoFile});
  for (std::size_t i = 0; i < isos.size(); ++i) {
    for (const MountedIso& iso : isos) {
      if (!iso.drive.empty() && SameDrive(DriveOf(session, path), iso.drive)) path = iso.file;
    }
  }
  return path;
}

// The program of a plug-in's command line, or of the discovered plug-in of that name.
std::string PluginProgram(Findings& findings, const std::string& plugin) {
  const std::string* entry = findings.plugins.find(plugin);
  const std::string& command = entry != nullptr ? *entry : plugin;
  if (command.starts_with('"')) return command.substr(1, command.find('"', 1) - 1);
  const auto end = command.find(".exe ");
  return end == std::string::npos ? command : command.substr(0, end + 4);
}

}  // namespace

bool IsDrive(const std::string& text) {
  const bool letter =
      !text.empty() && ((text[0] >= 'A' && text[0] <= 'Z') || (text[0] >= 'a' && text[0] <= 'z'));
  return letter && (text.substr(1) == ":" || text.substr(1) == ":\\");
}

bool SameDrive(const std::string& a, const std::string& b) {
  return LowerAscii(a.substr(0, 2)) == LowerAscii(b.substr(0, 2));
}

std::string LossOnTarget(Session& session, const Plan& plan) {
  const std::string& target = plan.target.drive;
  // A restore overwrites whatever is chosen.
  if (!plan.format && !IsGhost(plan)) return {};
  if (SameDrive(DriveOf(session, OutermostFile(session, plan.source)), target)) {
    return ReplaceAll(String(session, kTextSourceOnTarget), "%ip%", target);
  }
  for (const std::string& path :
       {session.paths.appDir, plan.answerFile, plan.driverFolder,
        plan.plugin.empty() ? plan.plugin : PluginProgram(session, plan.plugin)}) {
    if (path.empty() || !SameDrive(DriveOf(session, path), target)) continue;
    return ReplaceAll(ReplaceAll(More(session, kMoreLiesOnTarget), "%ip%", target), "%f%", path);
  }
  return {};
}

}  // namespace pavoline
