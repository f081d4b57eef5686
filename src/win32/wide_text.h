#pragma once

#include <string>
#include <string_view>

// Between the program's UTF-8 and the platform's UTF-16. What is malformed becomes U+FFFD.
namespace pavoline {

std::wstring Wide(std::string_view text);
std::string Narrow(std::wstring_view text);

// An absolute or relative path for the platform's file functions, long ones in the form that is
// not limited to 260 characters.
std::wstring WidePath(std::string_view path);

}  // namespace pavoline
