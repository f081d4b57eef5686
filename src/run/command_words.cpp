#include "run/command_words.h"

#include <string_view>

#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {

std::string ShortPath(Ground& ground, const std::string& path) {
  return "\"" + ground.platform.files.shortPath(path) + "\"";
}

std::string BatchPath(Ground& ground, const std::string& path) {
  return ReplaceAll(ShortPath(ground, path), "%", "%%");
}

std::string BatchTool(Ground& ground, Tool tool) {
  return BatchPath(ground, ground.paths.appDir) + ToolBelowProgram(ground.paths, tool);
}

std::string CommandWord(const std::string& path) {
  const bool bare = path.find_first_of(" \t&()^=;,!|<>%") == std::string::npos;
  if (bare) return path;
  // A backslash before the closing quote would take the quote's meaning away.
  return "\"" + path + (path.ends_with('\\') ? "\\\"" : "\"");
}

std::string EscapedForInterpreter(const std::string& path) {
  constexpr std::string_view kRead = "&|<>()^%";
  std::string escaped;
  for (const char c : path) {
    if (kRead.find(c) != std::string_view::npos) escaped += '^';
    escaped += c;
  }
  return escaped;
}

}  // namespace pavoline
