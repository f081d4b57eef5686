#include "session/ghost_program.h"

#include "platform/paths.h"
#include "platform/text.h"

namespace pavoline {

std::optional<GhostProgram> FindGhostProgram(Files& files, const ProgramPaths& paths) {
  const std::string program = ToolPath(paths, Tool::kGhost);
  if (!files.exists(program)) return std::nullopt;
  GhostProgram ghost{ParentFolder(program) + "\\Ghost.exe", files.fileVersion(program), {}};
  const auto numbers = Split(ghost.version, ".");
  if (numbers.size() >= 4 && IsNumeric(numbers[3])) ghost.build = LeadingNumber(numbers[3]);
  return ghost;
}

}  // namespace pavoline
