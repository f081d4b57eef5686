#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/processes.h"
#include "session/ground.h"

namespace pavoline {

// A program that was started without waiting, kept until it has ended. It runs under an
// interpreter, or is itself what was started; it is found by its name among the processes.
class FollowedProgram {
 public:
  enum class Sign {
    kWorks,    // it is listed
    kEnded,    // it was there, or whoever should start it has gone, and it is not listed
    kUnknown,  // not listed yet, or there is no list
  };

  // `image`: its name in the process list, in lower case; `log`: the file that grows while it
  // works, empty for none; `words`: the file that takes its standard error.
  FollowedProgram(std::unique_ptr<StartedProgram> starter, std::string image, std::string log,
                  std::string words)
      : starter_(std::move(starter)),
        image_(std::move(image)),
        log_(std::move(log)),
        words_(std::move(words)) {}

  // One look. `begun`: its output already shows that it was there.
  Sign look(Ground& ground, bool begun = false);

  // The second watch, behind whatever reads the log: true when whoever started the program has
  // ended, no process has its name, and the log has not grown for a minute. A living program never
  // makes it true.
  bool silentForGood(Ground& ground);

  bool starterRuns() { return starter_->running(); }
  std::uint32_t id() { return starter_->id(); }

  // What whoever started it returned; the interpreter returns its last program's.
  std::optional<std::uint32_t> exitCode() { return starter_->exitCode(); }
  std::string lastWords(Ground& ground) const;

  // As StartedProgram::whenEnded.
  void whenEnded(std::function<void()> action) { starter_->whenEnded(std::move(action)); }

  // Notes the exit code and the last words in the journal and removes the file that took them.
  void close(Ground& ground);

 private:
  std::unique_ptr<StartedProgram> starter_;
  std::string image_, log_, words_;
  bool seen_ = false;
  std::uint64_t logSize_ = 0;
  std::optional<std::uint64_t> silentSince_;  // milliseconds of the environment
};

// A listed name in lower case, without what may follow its three-letter extension.
std::string ComparableName(const std::string& imageName);

// True when at least one process has that image name, given in lower case with its extension.
bool IsProcessRunning(Ground& ground, const std::string& name);

}  // namespace pavoline
