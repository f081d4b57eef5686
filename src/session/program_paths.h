#pragma once

#include <string>

namespace pavoline {

// Where the program's own files lie and which build of the tools it uses. No trailing backslashes.
struct ProgramPaths {
  std::string appDir, appParentDir, binDir;
  std::string settingsPath;   // AppDir\Pavoline.ini, or the file that the command line names
  std::string journal;        // the file that took the last line; empty: none could
  std::string langFile;       // the language file in use
  std::string imageToolArch;  // "x64" or "x86", the folder name of every tool
};

// The tools that the program brings along, each in the folder of its build.
enum class Tool { kImaging, kLister, kGhost, kBcdboot, kBootsect };

std::string ToolName(Tool tool);  // "ghost.exe", in lower case as processes are looked for
std::string ToolPath(const ProgramPaths& paths, Tool tool);
// The same without the program's folder in front: "\Bin\Ghost\x64\ghost.exe".
std::string ToolBelowProgram(const ProgramPaths& paths, Tool tool);

// A path of the settings or of a row: "%App.Path%" and ".\\" stand for the program's folder.
std::string FromProgram(const ProgramPaths& paths, const std::string& path);

}  // namespace pavoline
