#include "config/locales.h"

#include <algorithm>

namespace pavoline {
namespace {

constexpr Locale kLocales[] = {
    {.id = 1028, .bootTag = "zh-TW"}, {.id = 1041, .bootTag = "ja-JP"},
    {.id = 1042, .bootTag = "ko-KR"}, {.id = 2052, .bootTag = "zh-CN", .chineseTools = true},
    {.id = 2055, .related = 1031},    {.id = 3076, .bootTag = "zh-HK", .related = 1028},
    {.id = 3079, .related = 1031},    {.id = 4100, .related = 2052},
    {.id = 4103, .related = 1031},    {.id = 5124, .related = 1028},
    {.id = 5127, .related = 1031},
};
constexpr Locale kOther;

}  // namespace

const Locale& LocaleOf(unsigned id) {
  const auto* found = std::ranges::find(kLocales, id, &Locale::id);
  return found == std::end(kLocales) ? kOther : *found;
}

}  // namespace pavoline
