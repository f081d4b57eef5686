#include "source/image_search.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "form/text_numbers.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "session/drive_list.h"
#include "source/folder_lister.h"

namespace pavoline {
namespace {

constexpr const char* kPatterns[] = {"*.esd", "*.wim", "*.gho", "*.iso"};
// An ISO file in the root of a mounted ISO is no image to install from.
constexpr std::span kMountedRootPatterns = std::span(kPatterns).first(3);
constexpr char kDefaultFolders[] = "esd,gho,wim,iso,ghost";

constexpr std::uint64_t kSmallestImage = 419'430'400;  // bytes; anything larger may be an image
constexpr std::string_view kStartImage = "boot.wim";   // of the installation medium itself

// Only the plain folder word is taken for a folder; what else is no file is too small anyway.
// The system also matches patterns with 8.3 names, to which "a.wimbak" is a ".wim".
bool IsImage(const FileEntry& entry) {
  return entry.attributes != kFolderAttribute && entry.size > kSmallestImage &&
         KindOf(entry.name) != ImageKind::kNone && LowerAscii(entry.name) != kStartImage;
}

void ShowCount(Session& session) {
  if (!session.search.running || session.activity == Activity::kInstalling) return;
  session.form.status.setText(ReplaceAll(String(session, kTextSearching), "%n%",
                                         std::to_string(session.search.found.size())));
}

void AddImage(Session& session, const std::string& path, const FileEntry& entry) {
  session.form.combo1.addItem(path);
  session.search.found.push_back({path, entry.size, entry.modified});
  ShowCount(session);
}

void ListImages(const FolderWalk& walk, const std::string& folder, const std::string& pattern) {
  Session& session = walk.session;
  if (walk.ended()) return;
  const std::string base = WithBackslash(folder);
  std::string first;
  session.platform.files.list(base + pattern, [&](const FileEntry& entry) {
    if (IsImage(entry)) {
      if (session.search.takeFirst) {
        first = base + entry.name;
        return false;
      }
      AddImage(session, base + entry.name, entry);
    }
    walk.handleEvents();
    return !walk.ended();
  });
  if (first.empty()) return;
  // Cleared first: the change reads the image, which handles events and may search again.
  session.search.takeFirst = false;
  session.form.combo1.setText(first);
}

void ListImages(const FolderWalk& walk, const std::string& folder,
                std::span<const char* const> patterns = kPatterns) {
  for (const char* pattern : patterns) ListImages(walk, folder, pattern);
}

std::vector<std::string> CdDrives(Session& session) {
  std::vector<std::string> drives = Split(DriveList(session, kDriveCdRom), ",");
  if (!drives.empty()) drives.pop_back();  // empty, behind the last comma
  return drives;
}

// Listed partitions, then CD drives.
std::vector<std::string> SearchedRoots(Session& session) {
  std::vector<std::string> roots = DriveRoots(session);
  for (std::string& drive : CdDrives(session)) roots.push_back(std::move(drive));
  return roots;
}

void SearchNamedFolders(const FolderWalk& walk) {
  Session& session = walk.session;
  std::string& names = session.options.searchDir;
  if (names.empty()) names = kDefaultFolders;
  for (const std::string& root : SearchedRoots(session)) {
    for (const std::string& name : Split(names, ",")) {
      const std::string folder = root + "\\" + name;
      if (session.platform.files.exists(folder)) ListImages(walk, folder);
    }
  }
}

void SearchLevels(const FolderWalk& walk, const std::vector<std::string>& roots,
                  std::span<const char* const> rootPatterns) {
  std::vector<std::string> level, below;
  for (const std::string& root : roots) {
    ListFolders(walk, root + "\\", level);
    ListImages(walk, root + "\\", rootPatterns);
  }
  constexpr int kDeepest = 3;
  for (int depth = 1; depth <= kDeepest; ++depth) {
    // Read anew at each level: the first image found in a mounted drive ends the search that goes
    // to the bottom.
    const Session& session = walk.session;
    if (session.options.searchLevel < depth && !session.search.takeFirst) break;
    below.clear();
    for (const std::string& folder : level) {
      if (depth < kDeepest) ListFolders(walk, folder, below);
      ListImages(walk, folder);
    }
    level.swap(below);
  }
}

}  // namespace

void SearchImages(Session& session, SearchMode mode, const std::string& folder) {
  const bool mounted = mode == SearchMode::kMounted;
  const bool takeFirstOfOuterSearch = session.search.takeFirst;
  session.search.takeFirst = mounted;
  const FolderWalk walk{session, mounted};
  ShowCount(session);
  if (mounted) {
    SearchLevels(walk, {folder}, kMountedRootPatterns);
  } else {
    if (!folder.empty()) DiscoverPlugins(session, folder);
    if (session.options.searchType == 1) {
      SearchLevels(walk, SearchedRoots(session), kPatterns);
    } else {
      SearchNamedFolders(walk);
    }
  }
  session.search.takeFirst = takeFirstOfOuterSearch;
  Journal(session, "images found: " + std::to_string(session.search.found.size()));
}

}  // namespace pavoline
