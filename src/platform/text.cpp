#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace pavoline {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Reads "[sign]digits[.digits]" from `pos`; `pos` ends behind what was read.
bool ReadNumber(std::string_view text, std::size_t& pos, double& value) {
  double sign = 1;
  if (pos < text.size() && (text[pos] == '-' || text[pos] == '+')) {
    sign = text[pos++] == '-' ? -1 : 1;
  }
  bool digits = false;
  double scale = 0;
  value = 0;
  for (; pos < text.size(); ++pos) {
    if (text[pos] == '.' && scale == 0) {
      scale = 1;
    } else if (IsDigit(text[pos])) {
      digits = true;
      value = value * 10 + (text[pos] - '0');
      scale *= 10;
    } else {
      break;
    }
  }
  value = sign * (scale > 1 ? value / scale : value);
  return digits;
}

}  // namespace

std::string LowerAscii(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return result;
}

std::string Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string ReplaceAll(std::string text, std::string_view what, std::string_view by) {
  if (what.empty()) return text;
  for (auto pos = text.find(what); pos != std::string::npos; pos = text.find(what, pos)) {
    text.replace(pos, what.size(), by);
    pos += by.size();
  }
  return text;
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  std::size_t start = 0;
  for (auto pos = text.find(separator); pos != std::string_view::npos;
       pos = text.find(separator, start)) {
    pieces.emplace_back(text.substr(start, pos - start));
    start = pos + separator.size();
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool EndsWith(std::string_view text, std::string_view end) { return text.ends_with(end); }

double LeadingNumber(std::string_view text) {
  std::size_t pos = text.find_first_not_of(' ');
  if (pos == std::string_view::npos) return 0;
  double value = 0;
  return ReadNumber(text, pos, value) ? value : 0;
}

int LeadingInteger16(std::string_view text) {
  const double value = std::trunc(LeadingNumber(text));
  return value >= -32768 && value <= 32767 ? static_cast<int>(value) : 0;
}

std::string BytesText(std::uint64_t bytes) {
  const double megabytes = static_cast<double>(bytes) / (1 << 20);
  const bool large = megabytes >= 1024;
  char text[32];
  std::snprintf(text, sizeof text, "%.2f%s", large ? megabytes / 1024 : megabytes,
                large ? "GB" : "MB");
  return text;
}

bool IsNumeric(std::string_view text) {
  std::size_t pos = 0;
  double value = 0;
  return ReadNumber(text, pos, value) && pos == text.size();
}

}  // namespace pavoline
