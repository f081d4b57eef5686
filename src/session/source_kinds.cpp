#include "session/source_kinds.h"

#include <algorithm>

#include "platform/paths.h"

namespace pavoline {
namespace {

constexpr SourceKind kKinds[] = {
    {ImageKind::kIso, ".iso", ReadBy::kMounting, InstalledBy::kNothing, 4, false, nullptr, false},
    {ImageKind::kWim, ".wim", ReadBy::kImagingProgram, InstalledBy::kImagingProgram, 1, false,
     "\\sources\\install.wim", true},
    {ImageKind::kEsd, ".esd", ReadBy::kImagingProgram, InstalledBy::kImagingProgram, 0, false,
     "\\sources\\install.esd", false},
    {ImageKind::kGho, ".gho", ReadBy::kGhostProgram, InstalledBy::kGhostProgram, 2, false, nullptr,
     false},
    {ImageKind::kSwm, ".swm", ReadBy::kFirstPart, InstalledBy::kImagingProgram, 3, true,
     "\\sources\\install.swm", false},
};

constexpr SourceKind kNoSource = {
    ImageKind::kNone, "", ReadBy::kNothing, InstalledBy::kNothing, -1, false, nullptr, false};

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
