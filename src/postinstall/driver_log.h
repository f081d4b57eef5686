#pragma once

#include <string>
#include <string_view>
#include <vector>

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

// The paths of the packages that dism could not add, each once, as its output names them. Told
// apart by the shape of a line, whose words are in the system's language.
std::vector<std::string> FailedDrivers(std::string_view log);

}  // namespace pavoline
