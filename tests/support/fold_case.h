#pragma once

#include <string>
#include <string_view>

namespace pavoline::testing {

// Upper and lower case of UTF-8 text in every script, whatever locale the test runs in.
std::string Lower(std::string_view text);
std::string Upper(std::string_view text);

std::u32string Decode(std::string_view utf8);  // a byte that fits nowhere becomes U+FFFD
std::string Encode(std::u32string_view characters);

}  // namespace pavoline::testing
