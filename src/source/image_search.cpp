#include "source/image_search.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "form/text_numbers.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "session/drive_list.h"
#include "session/split_image.h"
#include "source/folder_lister.h"

namespace pavoline {
namespace {

constexpr char kDefaultFolders[] = "esd,gho,wim,iso,ghost";

constexpr std::uint64_t kSmallestImage = 419'430'400;  // bytes; anything larger may be an image
constexpr std::string_view kStartImage = "boot.wim";   // of the installation medium itself

// Only the plain folder word is taken for a folder; what else is no file is too small anyway.
bool IsImage(const FileEntry& entry) {
  return entry.attributes != kFolderAttribute && entry.size > kSmallestImage &&
         LowerAscii(entry.name) != kStartImage;
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

struct FolderImage {
  FileEntry entry;
  int place;  // of its kind
};

// An ISO file in the root of a mounted ISO is no image to install from.
enum class Wanted { kAll, kUnmounted };

// The images of one folder in the order of their kinds; within a kind as listed.
struct FolderImages {
  Files& files;
  const std::string& base;
  Wanted wanted;
  std::vector<FolderImage> images = {};

  void take(FileEntry entry) {
    const SourceKind& kind = SourceKindOf(entry.name);
    if (kind.readBy == ReadBy::kNothing) return;
    if (wanted == Wanted::kUnmounted && kind.readBy == ReadBy::kMounting) return;
    // Its first part, which may be tiny, stands for all of a split image.
    if (kind.readBy == ReadBy::kFirstPart) entry.size = SplitImageSize(files, base + entry.name);
    if (IsImage(entry)) images.push_back({std::move(entry), kind.searchPlace});
  }
  void sort() { std::ranges::stable_sort(images, {}, &FolderImage::place); }
};

// The first image becomes the source when that is asked for; the others go into the list.
void Report(Session& session, const std::string& base, const FolderImages& found) {
  int taken = -1;  // the kind that the source came from: the rest of it is passed over
  for (const auto& [entry, place] : found.images) {
    if (session.form.unloaded()) return;
    if (place == taken) continue;
    if (!session.search.takeFirst) {
      AddImage(session, base + entry.name, entry);
      continue;
    }
    // Cleared first: the change reads the image, which handles events and may search again.
    session.search.takeFirst = false;
    taken = place;
    session.form.combo1.setText(base + entry.name);
  }
}

// Lists a folder once, for its images and, where `below` is given, for its subfolders.
void Look(const FolderWalk& walk, const std::string& folder, std::vector<std::string>* below,
          Wanted wanted = Wanted::kAll) {
  if (walk.ended()) return;
  const std::string base = WithBackslash(folder);
  FolderImages images{walk.session.platform.files, base, wanted};
  walk.session.platform.files.list(base + "*.*", [&](const FileEntry& entry) {
    if (below != nullptr && IsSearchedFolder(entry)) below->push_back(base + entry.name);
    images.take(entry);
    walk.handleEvents();
    return !walk.ended();
  });
  images.sort();
  Report(walk.session, base, images);
}

std::vector<std::string> CdDrives(Ground& ground) {
  std::vector<std::string> drives = Split(DriveList(ground, kDriveCdRom), ",");
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
      if (session.platform.files.exists(folder)) Look(walk, folder, nullptr);
    }
  }
}

void SearchLevels(const FolderWalk& walk, const std::vector<std::string>& roots, Wanted inRoots) {
  std::vector<std::string> level, below;
  for (const std::string& root : roots) {
    Look(walk, root + "\\", &level, inRoots);
  }
  constexpr int kDeepest = 3;
  for (int depth = 1; depth <= kDeepest; ++depth) {
    // Read anew at each level: the first image found in a mounted drive ends the search that goes
    // to the bottom.
    const Session& session = walk.session;
    if (session.options.searchLevel < depth && !session.search.takeFirst) break;
    below.clear();
    for (const std::string& folder : level) {
      Look(walk, folder, depth < kDeepest ? &below : nullptr);
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
    SearchLevels(walk, {folder}, Wanted::kUnmounted);
  } else {
    if (!folder.empty()) DiscoverPlugins(session, folder);
    if (session.options.searchType == 1) {
      SearchLevels(walk, SearchedRoots(session), Wanted::kAll);
    } else {
      SearchNamedFolders(walk);
    }
  }
  session.search.takeFirst = takeFirstOfOuterSearch;
  Journal(session, "images found: " + std::to_string(session.search.found.size()));
}

}  // namespace pavoline
