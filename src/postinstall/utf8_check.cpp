#include "postinstall/utf8_check.h"

namespace pavoline {
namespace {

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// After these first bytes, half of the second ones would spell a character that has a shorter form,
// half of a surrogate pair, or one behind the last character there is.
bool IsSecond(unsigned char first, unsigned char second) {
  switch (first) {
    case 0xE0:
      return second >= 0xA0;
    case 0xED:
      return second < 0xA0;
    case 0xF0:
      return second >= 0x90;
    case 0xF4:
      return second < 0x90;
  }
  return true;
}

}  // namespace

std::size_t Utf8Length(char first) {
  const auto byte = static_cast<unsigned char>(first);
  if (byte < 0x80) return 1;
  if (byte >= 0xC2 && byte <= 0xDF) return 2;
  if (byte >= 0xE0 && byte <= 0xEF) return 3;
  return byte >= 0xF0 && byte <= 0xF4 ? 4 : 0;
}

bool IsUtf8Text(std::string_view bytes) {
  for (std::size_t pos = 0; pos < bytes.size();) {
    const std::size_t length = Utf8Length(bytes[pos]);
    if (length == 0 || bytes[pos] == '\0' || bytes.size() - pos < length) return false;
    for (std::size_t i = 1; i < length; ++i) {
      if (!IsContinuation(bytes[pos + i])) return false;
    }
    if (length > 1 && !IsSecond(static_cast<unsigned char>(bytes[pos]),
                                static_cast<unsigned char>(bytes[pos + 1]))) {
      return false;
    }
    pos += length;
  }
  return true;
}

}  // namespace pavoline
