#include "engine/apply_log.h"

#include <algorithm>

#include "form/text_numbers.h"
#include "platform/text.h"
#include "run/mid_between.h"

namespace pavoline {
namespace {

constexpr std::string_view kCreating = "Creating files:";
constexpr std::string_view kExtracting = "Extracting file data:";
constexpr std::string_view kMetadata = "Applying metadata to files:";
constexpr std::string_view kDoneLine = "Done applying WIM image.";

constexpr std::size_t kLongestLine = 1024;  // bytes of a progress line that are looked at

struct Phase {
  int status;
  int ApplyProgress::*percent;
  bool watchesTool;
};

// Only the long phase watches the program.
constexpr Phase kPhases[] = {
    {kTextCreatingFiles, &ApplyProgress::createPercent, false},
    {kTextExtracting, &ApplyProgress::extractPercent, true},
    {kTextApplyingMetadata, &ApplyProgress::metadataPercent, false},
};
constexpr int kLastPhase = 2;

// An image without any file data goes from the first phase straight to the end, so the end is a
// sign in every phase.
bool IsOver(const ApplyLog& log, int phase) {
  return log.done() || (phase < kLastPhase && log.phase(phase + 1).seen());
}

std::optional<int> PercentOf(std::string_view line) {
  const std::string number = MidBetween(line, "(", "%)", false);
  if (!IsNumeric(number)) return std::nullopt;
  return std::clamp(LeadingInteger16(number), 0, 100);
}

}  // namespace

void MarkerReader::keep(std::string_view text) {
  current_.append(text.substr(0, kLongestLine - std::min(kLongestLine, current_.size())));
}

void MarkerReader::feed(std::string_view piece) {
  pending_.append(piece);
  std::size_t from = 0;
  for (auto at = pending_.find(marker_); at != std::string::npos;
       at = pending_.find(marker_, from)) {
    keep(std::string_view(pending_).substr(from, at - from));
    if (count_ > 0) whole_ = current_;
    current_.clear();
    count_ = std::min(count_ + 1, 2);
    from = at + marker_.size();
  }
  // The end may be the beginning of a marker.
  const std::size_t open = std::min(pending_.size() - from, marker_.size() - 1);
  keep(std::string_view(pending_).substr(from, pending_.size() - from - open));
  pending_.erase(0, pending_.size() - open);
}

std::optional<std::string_view> MarkerReader::lastWholeLine() const {
  if (count_ < 2) return std::nullopt;
  return whole_;
}

ApplyLog::ApplyLog()
    : phases_{MarkerReader(kCreating), MarkerReader(kExtracting), MarkerReader(kMetadata)},
      done_(kDoneLine) {}

void ApplyLog::feed(std::string_view piece) {
  for (MarkerReader& reader : phases_) reader.feed(piece);
  done_.feed(piece);
}

ApplyStep ParseApplyLog(const ApplyLog& log, const ApplyProgress& before) {
  ApplyStep step;
  step.progress = before;
  const auto* phase = std::find_if(std::begin(kPhases), std::end(kPhases),
                                   [&](const Phase& p) { return before.*p.percent < 100; });
  if (phase == std::end(kPhases)) {
    step.finished = true;
    return step;
  }
  const int number = static_cast<int>(phase - kPhases);
  step.status = phase->status;
  if (IsOver(log, number)) {
    step.shown = 100;
  } else if (const auto line = log.phase(number).lastWholeLine()) {
    step.shown = PercentOf(*line);
    step.toolNeeded = phase->watchesTool;
  }
  if (step.shown) step.progress.*(phase->percent) = *step.shown;
  return step;
}

}  // namespace pavoline
