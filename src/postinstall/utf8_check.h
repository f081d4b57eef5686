#pragma once

#include <cstddef>
#include <string_view>

namespace pavoline {

// Bytes of the UTF-8 character that a byte begins; 0 for a byte that begins none.
std::size_t Utf8Length(char first);

// True for well-formed UTF-8 without NUL characters, which no text file has but UTF-16 does.
bool IsUtf8Text(std::string_view bytes);

}  // namespace pavoline
