#include <algorithm>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/profile.h"
#include "platform/text.h"
#include "source/folder_lister.h"
#include "source/image_search.h"

namespace pavoline {
namespace {

constexpr int kValueBuffer = 128;  // bytes with the final NUL, as for the program's own settings

std::vector<std::string> CandidateFolders(Session& session, const std::string& folder) {
  std::vector<std::string> parents = DriveRoots(session);
  parents.push_back(session.paths.appDir);
  std::vector<std::string> candidates;
  for (const std::string& parent : parents) {
    const std::string path = parent + "\\" + folder;
    if (session.platform.files.exists(path)) {
      ListFolders(FolderWalk{session}, path + "\\", candidates);
    }
  }
  return candidates;
}

// "..", also with the dots and blanks behind it that the system passes over.
bool LeadsUp(const std::string& part) {
  return part.starts_with("..") && part.find_first_not_of(". ") == std::string::npos;
}

// A plug-in runs a program of its own folder, not whatever a description file points at.
bool StaysInFolder(const std::string& program) {
  if (program.empty() || Contains(program, ":")) return false;
  const auto parts = Split(ReplaceAll(program, "/", "\\"), "\\");
  return !parts.front().empty() && std::ranges::none_of(parts, LeadsUp);
}

void AddPlugin(Session& session, const std::string& folder) {
  const std::string file = folder + "\\config.ini";
  if (!session.platform.files.exists(file)) return;
  const ProfileSection section = session.platform.profile.readSection(file, "Option", kValueBuffer);
  const std::string name = section.value("Plug-inName");
  const std::string program = section.value("Plug-inExe");
  const std::string parameters = section.value("Plug-inExeParm");
  if (name.empty() || !StaysInFolder(program) || session.plugins.contains(name)) return;

  session.plugins.add(name, folder + "\\" + program + (parameters.empty() ? "" : " " + parameters));
  ComboBox& list = session.form.combo2;
  if (std::ranges::find(list.items(), name) == list.items().end()) list.addItem(name);
}

}  // namespace

void DiscoverPlugins(Session& session, const std::string& folder) {
  if (folder.empty()) return;
  const std::vector<std::string> candidates = CandidateFolders(session, folder);
  if (session.form.unloaded()) return;
  session.plugins.clear();
  const FolderWalk walk{session};
  for (const std::string& candidate : candidates) {
    AddPlugin(session, candidate);
    walk.handleEvents();
    if (session.form.unloaded()) return;
  }
  Journal(session, "plug-ins found: " + std::to_string(session.plugins.size()));
}

}  // namespace pavoline
