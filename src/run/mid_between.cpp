#include "run/mid_between.h"

namespace pavoline {

std::string MidBetween(std::string_view text, std::string_view start, std::string_view end,
                       bool fromBack) {
  const auto first = text.find(start);
  if (first == std::string_view::npos) return {};
  const auto from = first + start.size();
  const auto to = fromBack ? text.rfind(end) : text.find(end, from);
  if (to == std::string_view::npos || to < from) return {};
  return std::string(text.substr(from, to - from));
}

}  // namespace pavoline
