#include "source/folder_lister.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/text.h"
#include "source/source_wait.h"

namespace pavoline {
namespace {

constexpr std::string_view kSkipped[] = {
    ".",
    "..",
    "windows",
    "boot",
    "recovery",
    "efi",
    "documents and settings",
    "program files",
    "program files (x86)",
    "programdata",
    "$recycle.bin",
    "$winreagent",
    "perflogs",
    "users",
};

}  // namespace

bool IsSearchedFolder(const FileEntry& entry) {
  return (entry.attributes & kFolderAttribute) != 0 &&
         std::ranges::find(kSkipped, LowerAscii(entry.name)) == std::end(kSkipped);
}

// Often enough for the window to paint and for Stop to answer at once; handling them after each
// entry would take several times as long as the listing itself.
void FolderWalk::handleEvents() const {
  constexpr std::uint64_t kInterval = 15;  // milliseconds
  const std::uint64_t now = session.platform.environment.milliseconds();
  if (handledAt != 0 && now - handledAt < kInterval) return;
  handledAt = std::max<std::uint64_t>(now, 1);
  std::optional<SourceWait> wait;
  if (locksSource) wait.emplace(session);
  session.platform.processes.handleEvents();
}

// Junctions are followed like folders: walks are three levels deep at most, so that one leading
// back up ends, and a volume may be mounted in a folder.
void ListFolders(const FolderWalk& walk, const std::string& folder,
                 std::vector<std::string>& found) {
  Files& files = walk.session.platform.files;
  if (walk.ended() || !files.accessible(folder)) return;
  const std::string base = WithBackslash(folder);
  files.list(base + "*.*", [&](const FileEntry& entry) {
    if (IsSearchedFolder(entry)) found.push_back(base + entry.name);
    walk.handleEvents();
    return !walk.ended();
  });
}

std::vector<std::string> DriveRoots(const Findings& findings) {
  std::vector<std::string> roots;
  for (auto entry = findings.partitions.rbegin(); entry != findings.partitions.rend(); ++entry) {
    if (!entry->drive.empty()) roots.push_back(entry->drive);
  }
  return roots;
}

}  // namespace pavoline
