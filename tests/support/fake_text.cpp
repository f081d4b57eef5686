#include "support/fake_text.h"

#include <iconv.h>
#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

namespace pavoline::testing {
namespace {

constexpr char kUtf8[] = "UTF-8", kUtf16[] = "UTF-16LE", kWide[] = "WCHAR_T";

// Kept open: to open one costs more than what it converts.
iconv_t Converter(const std::string& from, const std::string& to) {
  static auto& open = *new std::map<std::pair<std::string, std::string>, iconv_t>;
  const auto [it, isNew] = open.try_emplace({from, to});
  if (isNew) it->second = iconv_open(to.c_str(), from.c_str());
  if (it->second == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("No code page " + to);
  return it->second;
}

// Nothing when a byte of `bytes` cannot be converted.
std::optional<std::string> Convert(const std::string& from, const std::string& to,
                                   std::string bytes) {
  std::string result(bytes.size() * 4 + 8, '\0');
  char* in = bytes.data();
  char* out = result.data();
  std::size_t inLeft = bytes.size(), outLeft = result.size();
  const auto failed = static_cast<std::size_t>(-1);
  if (iconv(Converter(from, to), &in, &inLeft, &out, &outLeft) == failed) return std::nullopt;
  result.resize(result.size() - outLeft);
  return result;
}

// By characters of up to four units of so many bytes; a unit that begins none becomes `otherwise`.
std::string Translate(const std::string& from, const std::string& to, const std::string& bytes,
                      std::size_t unit, const std::string& otherwise) {
  if (const auto whole = Convert(from, to, bytes)) return *whole;
  std::string result;
  for (std::size_t i = 0, length = unit; i + unit <= bytes.size(); i += length) {
    std::optional<std::string> character;
    for (length = 0; length < 4 * unit && !character;) {
      character = Convert(from, to, bytes.substr(i, length += unit));
    }
    if (!character) length = unit;
    result += character.value_or(otherwise);
  }
  return result;
}

std::string WideBytes(const std::string& text) {
  return Translate(kUtf8, kWide, text, 1, Convert(kUtf8, kWide, "\uFFFD").value());
}

std::string Map(std::string_view text, wint_t (*convert)(wint_t, locale_t)) {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  std::wstring characters(text.begin(), text.end());
  const bool plain = std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
  if (!plain) characters = Decode(text);
  for (wchar_t& c : characters) c = static_cast<wchar_t>(convert(static_cast<wint_t>(c), locale));
  return plain ? std::string(characters.begin(), characters.end()) : Encode(characters);
}

}  // namespace

std::string Lower(std::string_view text) { return Map(text, towlower_l); }
std::string Upper(std::string_view text) { return Map(text, towupper_l); }

std::wstring Decode(std::string_view utf8) {
  const std::string bytes = WideBytes(std::string(utf8));
  std::wstring result(bytes.size() / sizeof(wchar_t), L'\0');
  bytes.copy(reinterpret_cast<char*>(result.data()), bytes.size());
  return result;
}

std::string Encode(std::wstring_view characters) {
  return Convert(kWide, kUtf8,
                 {reinterpret_cast<const char*>(characters.data()),
                  characters.size() * sizeof(wchar_t)})
      .value();
}

std::string FakeTextServices::toAnsi(const std::string& text) {
  return Translate(kWide, codePage, WideBytes(text), sizeof(wchar_t), "?");
}

std::string FakeTextServices::toConsole(const std::string& text) {
  return Translate(kWide, console(), WideBytes(text), sizeof(wchar_t), "?");
}

std::string FakeTextServices::fromConsole(const std::string& bytes) {
  return Translate(console(), kUtf8, bytes, 1, "\uFFFD");
}

std::string FakeTextServices::fromAnsi(const std::string& bytes) {
  return Translate(codePage, kUtf8, bytes, 1, "\uFFFD");
}

std::string FakeTextServices::fromUtf16(const std::string& bytes) {
  return Translate(kUtf16, kUtf8, bytes, 2, "\uFFFD");
}

std::string FakeTextServices::toUtf16(const std::string& text) {
  return Convert(kUtf8, kUtf16, text).value();
}

}  // namespace pavoline::testing
