#include "source/image_search.h"

#include <algorithm>
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
#include "session/split_image.h"
#include "source/folder_lister.h"

namespace pavoline {
namespace {

constexpr ImageKind kKinds[] = {ImageKind::kEsd, ImageKind::kWim, ImageKind::kGho, ImageKind::kSwm,
                                ImageKind::kIso};
// An ISO file in the root of a mounted ISO is no image to install from.
constexpr std::span kMountedRootKinds = std::span(kKinds).first(4);
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

// The images of one folder by kind, in the order of the patterns; within a kind as listed.
struct FolderImages {
  Files& files;
  const std::string& base;
  std::vector<FileEntry> ofKind[std::size(kKinds)] = {};

  void take(FileEntry entry) {
    const auto* kind = std::ranges::find(kKinds, KindOf(entry.name));
    if (kind == std::end(kKinds)) return;
    // Its first part, which may be tiny, stands for all of a split image.
    if (*kind == ImageKind::kSwm) entry.size = SplitImageSize(files, base + entry.name);
    if (IsImage(entry)) ofKind[kind - std::begin(kKinds)].push_back(std::move(entry));
  }
};

// The first image becomes the source when that is asked for; the others go into the list.
void Report(Session& session, const std::string& base, const FolderImages& images,
            std::span<const ImageKind> kinds) {
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    for (const FileEntry& entry : images.ofKind[i]) {
      if (session.form.unloaded()) return;
      if (!session.search.takeFirst) {
        AddImage(session, base + entry.name, entry);
        continue;
      }
      // Cleared first: the change reads the image, which handles events and may search again.
      session.search.takeFirst = false;
      session.form.combo1.setText(base + entry.name);
      break;  // the rest of its kind is passed over
    }
  }
}

// Lists a folder once, for its images and, where `below` is given, for its subfolders.
void Look(const FolderWalk& walk, const std::string& folder, std::vector<std::string>* below,
          std::span<const ImageKind> kinds = kKinds) {
  if (walk.ended()) return;
  const std::string base = WithBackslash(folder);
  FolderImages images{walk.session.platform.files, base};
  walk.session.platform.files.list(base + "*.*", [&](const FileEntry& entry) {
    if (below != nullptr && IsSearchedFolder(entry)) below->push_back(base + entry.name);
    images.take(entry);
    walk.handleEvents();
    return !walk.ended();
  });
  Report(walk.session, base, images, kinds);
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
      if (session.platform.files.exists(folder)) Look(walk, folder, nullptr);
    }
  }
}

void SearchLevels(const FolderWalk& walk, const std::vector<std::string>& roots,
                  std::span<const ImageKind> rootKinds) {
  std::vector<std::string> level, below;
  for (const std::string& root : roots) {
    Look(walk, root + "\\", &level, rootKinds);
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
    SearchLevels(walk, {folder}, kMountedRootKinds);
  } else {
    if (!folder.empty()) DiscoverPlugins(session, folder);
    if (session.options.searchType == 1) {
      SearchLevels(walk, SearchedRoots(session), kKinds);
    } else {
      SearchNamedFolders(walk);
    }
  }
  session.search.takeFirst = takeFirstOfOuterSearch;
  Journal(session, "images found: " + std::to_string(session.search.found.size()));
}

}  // namespace pavoline
