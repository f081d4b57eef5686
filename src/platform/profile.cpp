#include "platform/profile.h"

#include "platform/text.h"

namespace pavoline {
namespace {

std::string_view WithoutBlanksAndTabs(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

std::string_view WithoutQuotes(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                      (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

void ProfileSection::add(std::string_view line,
                         const std::function<std::string(std::string_view)>& cut) {
  const auto sign = line.find('=');
  const auto [place, isNew] =
      values_.try_emplace(LowerAscii(WithoutBlanksAndTabs(line.substr(0, sign))));
  if (!isNew || sign == std::string_view::npos) return;
  place->second = Trim(cut(WithoutQuotes(WithoutBlanksAndTabs(line.substr(sign + 1)))));
}

std::string ProfileSection::value(std::string_view key) const {
  const auto found = values_.find(LowerAscii(key));
  return found == values_.end() ? std::string() : found->second;
}

}  // namespace pavoline
