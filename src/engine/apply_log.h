#pragma once

#include <optional>
#include <string>
#include <string_view>

// Reads the imaging program's output. What a look tells is a function of the output so far and of
// what was known before, so that it can be tried on any log.
namespace pavoline {

// Percent of the imaging program's three phases; 100: over.
struct ApplyProgress {
  int createPercent = 0, extractPercent = 0, metadataPercent = 0;
};

// Follows one marker through a text that comes in pieces of any size. Keeps what stood between the
// last two markers, up to a bound: progress lines are short, and a text without line ends is none.
class MarkerReader {
 public:
  explicit MarkerReader(std::string_view marker) : marker_(marker) {}

  void feed(std::string_view piece);
  bool seen() const { return count_ > 0; }
  // Nothing before the marker came twice.
  std::optional<std::string_view> lastWholeLine() const;

 private:
  void keep(std::string_view text);

  std::string_view marker_;
  std::string pending_;  // may hold the beginning of a marker
  std::string current_;  // since the last marker
  std::string whole_;    // between the last two
  int count_ = 0;        // of markers: none, one, or more
};

// The output so far. Feeding costs the piece's size, a look costs nothing that grows.
class ApplyLog {
 public:
  ApplyLog();
  void feed(std::string_view piece);

  const MarkerReader& phase(int number) const { return phases_[number]; }
  bool done() const { return done_.seen(); }

 private:
  MarkerReader phases_[3];
  MarkerReader done_;
};

struct ApplyStep {
  int status = 0;  // text number of the phase's name; meaningless when `finished`
  ApplyProgress progress;
  std::optional<int> shown;  // percent to display; nothing: the display stays
  bool finished = false;     // the phases were over already before this look
  bool toolNeeded = false;   // the phase makes progress only while the program runs
};

// One look at the output so far. The program goes through three phases, each with a line of its own
// that it rewrites in place; the newest line may be half written, so that the one before it tells
// the percent. A phase is over at the first sign of a later one, and at most one phase ends per
// look.
ApplyStep ParseApplyLog(const ApplyLog& log, const ApplyProgress& before);

}  // namespace pavoline
