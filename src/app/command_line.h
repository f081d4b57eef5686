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

// Reads the process's arguments, the program path included, in any case; a later switch overrides
// an earlier one; unknown arguments are ignored. A switch counts wherever it occurs in an argument.
// Those that stand for a setting count at its beginning only, keep the case of their value, and
// make the whole argument theirs: a path may hold any word.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments, TextServices& text);

// Every switch. None stands inside another, so that an argument is one switch.
std::vector<std::string> SwitchWords();

// An argument as the record may hold it: what the program does not know may hold a secret and is
// cut at its value.
std::string RecordedArgument(const std::string& argument, TextServices& text);

}  // namespace pavoline
