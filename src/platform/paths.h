#pragma once

#include <string>
#include <string_view>

// Windows paths as text: "\" separates, "X:" begins.
namespace pavoline {

// The path before its last backslash; empty when there is none ("D:\a\b" gives "D:\a").
std::string ParentFolder(std::string_view path);

// What follows the last backslash; the whole path when there is none.
std::string FileName(std::string_view path);

// The last four characters in lower case (".wim"); the whole path when it is shorter.
std::string LastFourLower(std::string_view path);

// The path with one backslash at its end.
std::string WithBackslash(std::string_view path);

}  // namespace pavoline
