#include "ui/left_bytes.h"

#include <algorithm>

namespace pavoline {
namespace {

// Bytes from here on count as halves of double-byte characters.
constexpr unsigned char kFirstDoubleByte = 160;

}  // namespace

std::string LeftBytes(TextServices& services, const std::string& text, int n, CutMode mode) {
  const std::string ansi = services.toAnsi(text);
  if (ansi.size() <= static_cast<std::size_t>(n)) return text;
  const auto halves = std::count_if(ansi.begin(), ansi.begin() + n, [](char c) {
    return static_cast<unsigned char>(c) >= kFirstDoubleByte;
  });
  int cut = n;
  if (halves % 2 != 0 && mode == CutMode::kLeaveOut) cut = n - 1;
  if (halves % 2 != 0 && mode == CutMode::kTakeWhole) cut = n + 1;
  return services.fromAnsi(ansi.substr(0, static_cast<std::size_t>(cut)));
}

}  // namespace pavoline
