#include "support/fold_case.h"

#include <locale.h>
#include <wctype.h>

namespace pavoline::testing {
namespace {

locale_t Unicode() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

std::string Map(std::string_view text, wint_t (*convert)(wint_t, locale_t)) {
  std::u32string characters = Decode(text);
  for (char32_t& c : characters) c = static_cast<char32_t>(convert(c, Unicode()));
  return Encode(characters);
}

}  // namespace

std::string Lower(std::string_view text) { return Map(text, towlower_l); }
std::string Upper(std::string_view text) { return Map(text, towupper_l); }

std::u32string Decode(std::string_view utf8) {
  std::u32string result;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t c = length == 1 ? lead : lead & (0x7F >> length);
    bool good = lead < 0x80 || (lead >= 0xC2 && lead < 0xF5);
    for (std::size_t k = 1; good && k < length; ++k) {
      good = i + k < utf8.size() && (utf8[i + k] & 0xC0) == 0x80;
      if (good) c = (c << 6) | (utf8[i + k] & 0x3F);
    }
    result += good ? c : U'\uFFFD';
    i += good ? length : 1;
  }
  return result;
}

std::string Encode(std::u32string_view characters) {
  std::string result;
  for (char32_t c : characters) {
    if (c < 0x80) {
      result += static_cast<char>(c);
      continue;
    }
    const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    const int lead = more == 1 ? 0xC0 : more == 2 ? 0xE0 : 0xF0;
    result += static_cast<char>(lead | static_cast<int>(c >> (6 * more)));
    for (int k = more - 1; k >= 0; --k) result += static_cast<char>(0x80 | ((c >> (6 * k)) & 0x3F));
  }
  return result;
}

}  // namespace pavoline::testing
