#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/text_services.h"
#include "session/options.h"

namespace pavoline {

struct CommandLine {
  CommandLineOptions options;
  std::optional<unsigned> locale;  // from "/lng:"
};

// Reads the process's arguments, the program path included. A switch counts wherever it occurs in
// an argument, in any case; a later one overrides an earlier one; unknown arguments are ignored.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments, TextServices& text);

}  // namespace pavoline
