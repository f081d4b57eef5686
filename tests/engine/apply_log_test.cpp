#include "engine/apply_log.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "form/text_numbers.h"
#include "platform/text.h"
#include "run/mid_between.h"

namespace pavoline {

std::string Capture(const std::string& name) {
  std::ifstream in(PAVOLINE_SOURCE_DIR "/tests/engine/captures/" + name + ".log", std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(in)), {});
  return ReplaceAll(text, "\n", "\r\n");  // as standard output arrives on Windows
}

ApplyLog Fed(const std::string& text) {
  ApplyLog log;
  log.feed(text);
  return log;
}

// The same question answered by taking the whole text to pieces: the last piece may be half
// written, the one before it counts, and it takes two markers to have one.
std::optional<int> PercentByPieces(const std::string& text, const std::string& marker) {
  const auto pieces = Split(text, marker);
  if (pieces.size() < 3) return std::nullopt;
  return std::stoi(MidBetween(pieces[pieces.size() - 2], "(", "%)", false));
}

TEST(ApplyLog, FedByteByByteTellsTheLastWholePercentOfTheRunningPhase) {
  const std::string markers[] = {"Creating files:", "Extracting file data:",
                                 "Applying metadata to files:", "Done applying WIM image."};
  const std::string whole = Capture("three_phases");
  ASSERT_GT(whole.size(), 2000u);
  ApplyLog log;
  ApplyProgress progress;
  int phase = 0;
  for (std::size_t size = 1; size <= whole.size() && phase < 3; ++size) {
    log.feed(whole.substr(size - 1, 1));
    const std::string text = whole.substr(0, size);
    const ApplyStep step = ParseApplyLog(log, progress);
    ASSERT_EQ(step.status, kTextCreatingFiles + phase);
    const bool over = Contains(text, markers[phase + 1]);
    ASSERT_EQ(step.shown, over ? 100 : PercentByPieces(text, markers[phase])) << size << " bytes";
    EXPECT_EQ(step.toolNeeded, phase == 1 && !over && step.shown);
    progress = step.progress;
    if (step.shown == 100) ++phase;
  }
  EXPECT_TRUE(ParseApplyLog(log, progress).finished);
}

TEST(ApplyLog, SkipsAPercentThatIsNoneAndHoldsOneThatIsTooMuch) {
  const std::string line = "\rExtracting file data: 1 GiB of 3 GiB ";
  for (const auto& [percent, shown] :
       std::initializer_list<std::pair<std::string, std::optional<int>>>{
           {"(33%)", 33}, {"(x%)", {}}, {"(%)", {}}, {"cut", {}}, {"(250%)", 100}, {"(-3%)", 0}}) {
    const ApplyStep step = ParseApplyLog(Fed(line + percent + " done" + line), {100, 0, 0});
    EXPECT_EQ(step.shown, shown) << percent;
    EXPECT_TRUE(step.toolNeeded) << percent;
  }
}

}  // namespace pavoline
