#pragma once

#include <string_view>

namespace pavoline {

// What the last whole line of dism's output tells.
struct DriverStep {
  enum Kind {
    kSearching,          // a phase line, ending in dots
    kInstalling,         // `done` of `total` packages
    kOverUnlessRunning,  // a short line of another kind, or none at all
    kUnknown,            // a long line of another kind
  };
  Kind kind = kOverUnlessRunning;
  int done = 0, total = 0;
};

DriverStep ParseDriverLog(std::string_view log);

}  // namespace pavoline
