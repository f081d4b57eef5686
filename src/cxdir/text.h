#pragma once

#include <string>
#include <string_view>

namespace pavoline {

// UTF-8 to the system's ANSI code page; what that page lacks becomes "?", never a letter that
// merely looks alike (a label must not turn into quotes or other marks of a batch file).
std::string AnsiText(std::string_view utf8);

}  // namespace pavoline
