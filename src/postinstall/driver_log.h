#pragma once

#include <string_view>

namespace pavoline {

// What the last whole line of dism's output tells.
struct DriverStep {
  enum Kind {
    kSearching,   // a phase line, ending in dots
    kInstalling,  // `done` of `total` packages
    kOther,       // a line of another kind, or none at all
  };
  Kind kind = kOther;
  int done = 0, total = 0;
};

DriverStep ParseDriverLog(std::string_view log);

}  // namespace pavoline
