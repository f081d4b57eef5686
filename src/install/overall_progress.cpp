#include "install/overall_progress.h"

#include <algorithm>
#include <cstdio>

#include "engine/wimboot_copy.h"
#include "form/text_numbers.h"
#include "platform/text.h"

namespace pavoline {
namespace {

// Shares of time (overall_progress.h tells how they were measured).
double WeightOf(Phase phase) {
  switch (phase) {
    case Phase::kCopy:
      return 100;
    case Phase::kCreate:
      return 4;
    case Phase::kExtract:
      return 95;
    case Phase::kMetadata:
      return 1;
    case Phase::kRestore:
      return 1;
    case Phase::kDrivers:
      break;
  }
  return 0;
}

constexpr double kLeastShare = 0.03;        // before that a guess would jump
constexpr std::uint64_t kLeastTime = 3000;  // milliseconds
constexpr std::uint64_t kLeftStep = 5000;   // the time left is no more exact than that

// Of the phases up to now, and of what runs; nothing where that has no weight.
std::optional<double> ShareDone(const Overall& overall) {
  if (!overall.now || WeightOf(overall.now->phase) == 0) return std::nullopt;
  double all = 0, done = 0;
  bool before = true;
  for (const Phase phase : overall.phases) {
    all += WeightOf(phase);
    if (phase == overall.now->phase) {
      before = false;
      done += WeightOf(phase) * overall.now->percent / 100;
    }
    if (before) done += WeightOf(phase);
  }
  return all == 0 ? 0 : done / all;
}

// "4:05", "1:04:05"
std::string Clock(std::uint64_t milliseconds) {
  const auto seconds = static_cast<unsigned long long>(milliseconds / 1000);
  char text[32];
  if (seconds < 3600) {
    std::snprintf(text, sizeof text, "%llu:%02llu", seconds / 60, seconds % 60);
  } else {
    std::snprintf(text, sizeof text, "%llu:%02llu:%02llu", seconds / 3600, seconds / 60 % 60,
                  seconds % 60);
  }
  return text;
}

std::string PhasePart(const Texts& texts, const Overall& overall) {
  const auto place = std::ranges::find(overall.phases, overall.now->phase);
  const std::string number = std::to_string(place - overall.phases.begin() + 1);
  return ReplaceAll(ReplaceAll(texts.more[kMorePhase], "%n%", number), "%m%",
                    std::to_string(overall.phases.size()));
}

}  // namespace

std::vector<Phase> PhasesOf(const Plan& plan) {
  std::vector<Phase> phases;
  if (IsGhost(plan)) {
    phases = {Phase::kRestore};
  } else {
    phases = {Phase::kCreate, Phase::kExtract, Phase::kMetadata};
  }
  if (IsCopied(plan)) phases.insert(phases.begin(), Phase::kCopy);
  if (!plan.driverFolder.empty()) phases.push_back(Phase::kDrivers);
  return phases;
}

std::optional<int> OverallPercent(const Overall& overall) {
  const auto share = ShareDone(overall);
  return share ? std::optional(static_cast<int>(*share * 100)) : std::nullopt;
}

std::optional<std::uint64_t> TimeLeft(const Overall& overall) {
  const auto share = ShareDone(overall);
  if (!share || *share < kLeastShare || overall.goneInPhases < kLeastTime) return std::nullopt;
  const double left = static_cast<double>(overall.goneInPhases) * (1 - *share) / *share;
  return (static_cast<std::uint64_t>(left) + kLeftStep - 1) / kLeftStep * kLeftStep;
}

std::string OverallLine(const Texts& texts, const Overall& overall) {
  std::string line;
  const auto add = [&line](const std::string& part) {
    line += (line.empty() ? "" : " \u00b7 ") + part;
  };
  if (overall.now) add(PhasePart(texts, overall));
  if (const auto percent = OverallPercent(overall)) {
    add(ReplaceAll(texts.more[kMorePercent], "%p%", std::to_string(*percent)));
  }
  add(ReplaceAll(texts.more[kMoreGone], "%t%", Clock(overall.gone)));
  if (const auto left = TimeLeft(overall)) {
    const bool more = overall.phases.back() == Phase::kDrivers;
    add(ReplaceAll(texts.more[more ? kMoreAtLeastLeft : kMoreLeft], "%t%", Clock(*left)));
  }
  return line;
}

}  // namespace pavoline
