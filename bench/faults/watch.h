#pragma once

#include <string>

#include "faults/scene.h"

namespace faults {

// What was seen of one case, from outside.
struct Seen {
  std::string messages;       // their beginnings, in order, each in quotes
  std::string exit = "none";  // the program's exit code
  std::string recorded, left;
  double seconds = 0;   // from Start, or the program's start, to the end or to an idle window
  std::string verdict;  // what must never happen; empty when nothing of it did
};

// Runs the program once, with a person at it or without, and lets the case's events happen.
Seen TryCase(Case row);

}  // namespace faults
