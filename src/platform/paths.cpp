#include "platform/paths.h"

#include "platform/text.h"

namespace pavoline {

std::string ParentFolder(std::string_view path) {
  const auto slash = path.rfind('\\');
  return slash == std::string_view::npos ? std::string() : std::string(path.substr(0, slash));
}

std::string FileName(std::string_view path) {
  const auto slash = path.rfind('\\');
  return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string LastFourLower(std::string_view path) {
  return LowerAscii(path.size() > 4 ? path.substr(path.size() - 4) : path);
}

std::string WithBackslash(std::string_view path) {
  return path.ends_with('\\') ? std::string(path) : std::string(path) + "\\";
}

}  // namespace pavoline
