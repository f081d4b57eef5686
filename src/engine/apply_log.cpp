#include "engine/apply_log.h"

#include <algorithm>

#include "engine/mid_between.h"
#include "form/text_numbers.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr std::string_view kCreating = "Creating files:";
constexpr std::string_view kExtracting = "Extracting file data:";
constexpr std::string_view kMetadata = "Applying metadata to files:";
constexpr std::string_view kDone = "Done applying WIM image.";

struct Phase {
  int status;
  int ApplyProgress::*percent;
  std::string_view marker;
  std::string_view nextMarker;
  bool watchesTool;
};

// Only the long phase watches the program. An image without any file data goes from the first
// phase straight to the end, so the end is a sign in every phase.
constexpr Phase kPhases[] = {
    {kTextCreatingFiles, &ApplyProgress::createPercent, kCreating, kExtracting, false},
    {kTextExtracting, &ApplyProgress::extractPercent, kExtracting, kMetadata, true},
    {kTextApplyingMetadata, &ApplyProgress::metadataPercent, kMetadata, kDone, false},
};

// What stands between the last two markers; nothing before the marker came twice.
std::optional<std::string_view> LastWholeLine(std::string_view text, std::string_view marker) {
  const auto last = text.rfind(marker);
  if (last == std::string_view::npos || last < marker.size()) return std::nullopt;
  const auto previous = text.rfind(marker, last - marker.size());
  if (previous == std::string_view::npos) return std::nullopt;
  const auto start = previous + marker.size();
  return text.substr(start, last - start);
}

std::optional<int> PercentOf(std::string_view line) {
  const std::string number = MidBetween(line, "(", "%)", false);
  if (!IsNumeric(number)) return std::nullopt;
  return std::clamp(LeadingInteger16(number), 0, 100);
}

}  // namespace

ApplyStep ParseApplyLog(std::string_view text, const ApplyProgress& before) {
  ApplyStep step;
  step.progress = before;
  const auto phase = std::find_if(std::begin(kPhases), std::end(kPhases),
                                  [&](const Phase& p) { return before.*p.percent < 100; });
  if (phase == std::end(kPhases)) {
    step.finished = true;
    return step;
  }
  step.status = phase->status;
  if (Contains(text, phase->nextMarker) || Contains(text, kDone)) {
    step.shown = 100;
  } else if (const auto line = LastWholeLine(text, phase->marker)) {
    step.shown = PercentOf(*line);
    step.toolNeeded = phase->watchesTool;
  }
  if (step.shown) step.progress.*(phase->percent) = *step.shown;
  return step;
}

}  // namespace pavoline
