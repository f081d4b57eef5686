#pragma once

#include <string>

#include "platform/text_services.h"

namespace pavoline {

// What to do when the cut falls into a double-byte character. The names of a machine are split:
// only single bytes can be typed into them.
enum class CutMode {
  kSplit = 0,      // cut all the same
  kLeaveOut = 1,   // one byte earlier
  kTakeWhole = 2,  // one byte later
};

// The text cut to n bytes of its ANSI form; a text that is not longer comes back unchanged.
std::string LeftBytes(TextServices& services, const std::string& text, int n, CutMode mode);

}  // namespace pavoline
