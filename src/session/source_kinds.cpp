#include "session/source_kinds.h"

#include <algorithm>

#include "platform/paths.h"

namespace pavoline {
namespace {

constexpr SourceKind kKinds[] = {
    {.kind = ImageKind::kIso, .extension = ".iso", .readBy = ReadBy::kMounting, .searchPlace = 4},
    {.kind = ImageKind::kWim,
     .extension = ".wim",
     .readBy = ReadBy::kImagingProgram,
     .installedBy = InstalledBy::kImagingProgram,
     .searchPlace = 1,
     .onMedium = "\\sources\\install.wim",
     .backsRunning = true},
    {.kind = ImageKind::kEsd,
     .extension = ".esd",
     .readBy = ReadBy::kImagingProgram,
     .installedBy = InstalledBy::kImagingProgram,
     .searchPlace = 0,
     .onMedium = "\\sources\\install.esd"},
    {.kind = ImageKind::kGho,
     .extension = ".gho",
     .readBy = ReadBy::kGhostProgram,
     .installedBy = InstalledBy::kGhostProgram,
     .searchPlace = 2},
    {.kind = ImageKind::kSwm,
     .extension = ".swm",
     .readBy = ReadBy::kFirstPart,
     .installedBy = InstalledBy::kImagingProgram,
     .searchPlace = 3,
     .ownFilter = true,
     .onMedium = "\\sources\\install.swm"},
};
constexpr SourceKind kNoSource;

}  // namespace

std::span<const SourceKind> SourceKinds() { return kKinds; }

const SourceKind& SourceKindOf(const std::string& path) {
  const auto* found = std::ranges::find(kKinds, LastFourLower(path), &SourceKind::extension);
  return found == std::end(kKinds) ? kNoSource : *found;
}

const SourceKind& SourceKindOf(ImageKind kind) {
  const auto* found = std::ranges::find(kKinds, kind, &SourceKind::kind);
  return found == std::end(kKinds) ? kNoSource : *found;
}

ImageKind KindOf(const std::string& path) { return SourceKindOf(path).kind; }

std::string SharedFilter(DialogPlace place) {
  std::string filter;
  for (const SourceKind& kind : kKinds) {
    const bool left = kind.ownFilter ||
                      (place == DialogPlace::kInsideMounted && kind.readBy == ReadBy::kMounting);
    if (!left) filter += (filter.empty() ? "*" : ";*") + std::string(kind.extension);
  }
  return filter;
}

}  // namespace pavoline
