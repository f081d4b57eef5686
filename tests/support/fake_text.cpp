#include "support/fake_text.h"

#include <iconv.h>

#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "support/fold_case.h"

namespace pavoline::testing {
namespace {

// Kept open: to open one costs more than what it converts.
struct Converter {
  Converter(const std::string& from, const std::string& to)
      : handle(iconv_open(to.c_str(), from.c_str())) {
    if (handle == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("No code page " + to);
  }
  ~Converter() { iconv_close(handle); }
  iconv_t handle;
};

// Nothing when a byte of `bytes` cannot be converted.
std::optional<std::string> Convert(const std::string& from, const std::string& to,
                                   std::string bytes) {
  static std::map<std::pair<std::string, std::string>, std::unique_ptr<Converter>> converters;
  std::unique_ptr<Converter>& converter = converters[{from, to}];
  if (!converter) converter = std::make_unique<Converter>(from, to);
  std::string result(bytes.size() * 4 + 8, '\0');
  char* in = bytes.data();
  char* out = result.data();
  std::size_t inLeft = bytes.size(), outLeft = result.size();
  const bool good =
      iconv(converter->handle, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
  if (!good) return std::nullopt;
  result.resize(result.size() - outLeft);
  return result;
}

std::string ToCodePage(const std::string& text, const std::string& codePage) {
  std::string result;
  for (char32_t c : Decode(text)) {
    if (c < 0x80) {  // the same in every code page here
      result += static_cast<char>(c);
      continue;
    }
    result += Convert("UTF-8", codePage, Encode(std::u32string(1, c))).value_or("?");
  }
  return result;
}

}  // namespace

std::string FakeTextServices::toAnsi(const std::string& text) { return ToCodePage(text, codePage); }

std::string FakeTextServices::toConsole(const std::string& text) {
  return ToCodePage(text, consoleCodePage.empty() ? codePage : consoleCodePage);
}

std::string FakeTextServices::fromAnsi(const std::string& bytes) {
  std::string result;
  for (std::size_t i = 0; i < bytes.size();) {
    if (static_cast<unsigned char>(bytes[i]) < 0x80) {
      result += bytes[i++];
      continue;
    }
    std::optional<std::string> character;
    std::size_t length = 1;
    for (; length <= 2 && i + length <= bytes.size() && !character; ++length) {
      character = Convert(codePage, "UTF-8", bytes.substr(i, length));
    }
    result += character.value_or("\uFFFD");
    i += character ? length - 1 : 1;
  }
  return result;
}

std::string FakeTextServices::fromUtf16(const std::string& bytes) {
  std::u32string result;
  const auto unit = [&](std::size_t i) -> char32_t {
    return static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8;
  };
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const char32_t c = unit(i);
    const bool pair = c >= 0xD800 && c < 0xDC00 && i + 3 < bytes.size() && unit(i + 2) >= 0xDC00 &&
                      unit(i + 2) < 0xE000;
    if (pair) {
      result += 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
      i += 2;
    } else {
      result += c >= 0xD800 && c < 0xE000 ? U'\uFFFD' : c;
    }
  }
  return Encode(result);
}

std::string FakeTextServices::toUtf16(const std::string& text) {
  return Convert("UTF-8", "UTF-16LE", text).value_or(std::string());
}

}  // namespace pavoline::testing
