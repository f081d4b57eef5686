#include "session/program_paths.h"

#include "platform/text.h"

namespace pavoline {
namespace {

struct Place {
  const char* folder;
  const char* program;
};

Place PlaceOf(Tool tool) {
  switch (tool) {
    case Tool::kImaging:
      return {"wimlib-imagex", "wimlib-imagex.exe"};
    case Tool::kLister:
      return {"CxDir", "CxDir.exe"};
    case Tool::kGhost:
      return {"Ghost", "ghost.exe"};
    case Tool::kBcdboot:
      return {"Boot", "bcdboot.exe"};
    case Tool::kBootsect:
      return {"Boot", "bootsect.exe"};
  }
  return {"", ""};
}

}  // namespace

std::string ToolName(Tool tool) { return LowerAscii(PlaceOf(tool).program); }

std::string ToolBelowProgram(const ProgramPaths& paths, Tool tool) {
  const Place place = PlaceOf(tool);
  return std::string("\\Bin\\") + place.folder + "\\" + paths.imageToolArch + "\\" + place.program;
}

std::string ToolPath(const ProgramPaths& paths, Tool tool) {
  return paths.appDir + ToolBelowProgram(paths, tool);
}

std::string FromProgram(const ProgramPaths& paths, const std::string& path) {
  const std::string full = ReplaceAll(path, "%App.Path%", paths.appDir);
  return full.starts_with(".\\") ? paths.appDir + full.substr(1) : full;
}

}  // namespace pavoline
