#pragma once

#include <optional>
#include <string>

#include "platform/files.h"
#include "session/program_paths.h"

namespace pavoline {

// The program that restores Ghost images, as it was found below the program's folder.
struct GhostProgram {
  std::string path;             // as command lines and the details name it
  std::string version;          // "12.0.0.10531"; empty: it tells none
  std::optional<double> build;  // the version's fourth number
};
std::optional<GhostProgram> FindGhostProgram(Files& files, const ProgramPaths& paths);

}  // namespace pavoline
