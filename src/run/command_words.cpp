#include "run/command_words.h"

#include <string_view>

#include "platform/files.h"
#include "platform/text.h"

namespace pavoline {

std::string ShortPath(Session& session, const std::string& path) {
  return "\"" + session.platform.files.shortPath(path) + "\"";
}

std::string BatchPath(Session& session, const std::string& path) {
  return ReplaceAll(ShortPath(session, path), "%", "%%");
}

std::string BatchTool(Session& session, Tool tool) {
  return BatchPath(session, session.paths.appDir) + ToolBelowProgram(session.paths, tool);
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
