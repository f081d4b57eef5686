#include "run/text_mode_repair.h"

#include <cstddef>

namespace pavoline {
namespace {

constexpr char kCarriageReturn = '\x0D';
constexpr char kLineFeed = '\x0A';

bool EveryLineFeedIsPreceded(const std::string& bytes) {
  for (auto at = bytes.find(kLineFeed); at != std::string::npos;
       at = bytes.find(kLineFeed, at + 1)) {
    if (at == 0 || bytes[at - 1] != kCarriageReturn) return false;
  }
  return true;
}

std::string WithoutInsertedBytes(const std::string& bytes) {
  std::string result;
  result.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool inserted =
        bytes[i] == kCarriageReturn && i + 1 < bytes.size() && bytes[i + 1] == kLineFeed;
    if (!inserted) result.push_back(bytes[i]);
  }
  return result;
}

template <class Accept>
std::size_t CountCharacters(const std::string& bytes, Accept accept) {
  std::size_t count = 0;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const unsigned high = static_cast<unsigned char>(bytes[i + 1]);
    if (accept(static_cast<char16_t>(high << 8 | static_cast<unsigned char>(bytes[i])))) ++count;
  }
  return count;
}

std::size_t CountTags(const std::string& bytes) {
  return CountCharacters(bytes, [](char16_t c) { return c == u'<'; });
}
std::size_t CountAscii(const std::string& bytes) {
  return CountCharacters(bytes, [](char16_t c) { return (c >= u' ' && c < 0x7F) || c == u'\n'; });
}
// U+0A0D is no character of any script: two such bytes are an inserted one and its cause.
bool HasUnassignedPair(const std::string& bytes) {
  return CountCharacters(bytes, [](char16_t c) { return c == 0x0A0D; }) > 0;
}

}  // namespace

// A line feed byte without a carriage return byte before it proves that nothing was inserted.
// Otherwise both readings are possible (a Malayalam letter, U+0D15, before a line end has the two
// bytes of its own), and the one that makes better text is taken: a wrong reading is shifted by a
// byte between every other pair and loses the tags there. Where no tag stands between, an
// unassigned character and then the plain letters decide. The imaging program always inserts, so
// that a tie is mended. The length's parity says nothing: a file may have been cut short.
std::string RepairTextMode(std::string bytes) {
  if (bytes.find(kLineFeed) == std::string::npos || !EveryLineFeedIsPreceded(bytes)) return bytes;
  std::string mended = WithoutInsertedBytes(bytes);
  const std::size_t tagsAsIs = CountTags(bytes), tagsMended = CountTags(mended);
  if (tagsAsIs != tagsMended) return tagsAsIs > tagsMended ? bytes : mended;
  if (HasUnassignedPair(bytes)) return mended;
  return CountAscii(bytes) > CountAscii(mended) ? bytes : mended;
}

}  // namespace pavoline
