#pragma once

#include <array>
#include <string>

#include "form/text_numbers.h"

namespace pavoline {

// The tables of a language: what the program says, and the main window's fixed captions.
// An entry that the language file lacks is empty.
struct Texts {
  std::array<std::string, kStringCount> strings;
  std::array<std::string, kCaptionCount> captions;
  std::array<std::string, kMoreCount> more;  // what the program says beyond the numbered table
  std::array<std::string, kOptionCount> options;
};

}  // namespace pavoline
