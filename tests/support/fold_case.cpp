#include "support/fold_case.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <cuchar>

namespace pavoline::testing {
namespace {

locale_t Unicode() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

std::string Map(std::string_view text, wint_t (*convert)(wint_t, locale_t)) {
  if (std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; })) {
    std::string plain(text);
    for (char& c : plain) c = static_cast<char>(convert(static_cast<wint_t>(c), Unicode()));
    return plain;
  }
  std::u32string characters = Decode(text);
  for (char32_t& c : characters) c = static_cast<char32_t>(convert(c, Unicode()));
  return Encode(characters);
}

}  // namespace

std::string Lower(std::string_view text) { return Map(text, towlower_l); }
std::string Upper(std::string_view text) { return Map(text, towupper_l); }

std::u32string Decode(std::string_view utf8) {
  const locale_t before = uselocale(Unicode());
  std::u32string result;
  for (std::size_t i = 0; i < utf8.size();) {
    char32_t c = 0;
    std::mbstate_t state{};
    const std::size_t length = std::mbrtoc32(&c, utf8.data() + i, utf8.size() - i, &state);
    const bool good = length <= utf8.size() - i;
    result += good ? c : U'\uFFFD';
    i += good ? std::max<std::size_t>(length, 1) : 1;
  }
  uselocale(before);
  return result;
}

std::string Encode(std::u32string_view characters) {
  const locale_t before = uselocale(Unicode());
  std::string result;
  for (const char32_t c : characters) {
    char bytes[16];
    std::mbstate_t state{};
    result.append(bytes, std::c32rtomb(bytes, c, &state));
  }
  uselocale(before);
  return result;
}

}  // namespace pavoline::testing
