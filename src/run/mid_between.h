#pragma once

#include <string>
#include <string_view>

namespace pavoline {

// The text strictly between the first `start` and the next `end` (with `fromBack`: the last `end`
// of the whole text). Empty when either marker is missing or the end lies before the start's end.
std::string MidBetween(std::string_view text, std::string_view start, std::string_view end,
                       bool fromBack);

}  // namespace pavoline
