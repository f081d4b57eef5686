#include "session/split_image.h"

#include <algorithm>
#include <string_view>

namespace pavoline {
namespace {

// Offsets in the header, in bytes; numbers stand with their lowest byte first.
constexpr std::size_t kHeaderSize = 208, kSetAt = 24, kSetSize = 16, kNumberAt = 40, kTotalAt = 42;
constexpr std::size_t kTablesAt[] = {48, 72, 96, 124};  // length (7 bytes), flags, offset
constexpr std::string_view kMark("MSWIM\0\0\0", 8);
constexpr std::size_t kEndingSize = 4;  // ".swm"

std::uint64_t Number(const std::string& header, std::size_t at, std::size_t bytes) {
  std::uint64_t number = 0;
  while (bytes-- > 0) number = number << 8 | static_cast<unsigned char>(header[at + bytes]);
  return number;
}

std::string PartPath(const std::string& first, unsigned number) {
  const std::size_t end = first.size() - std::min(first.size(), kEndingSize);
  return first.substr(0, end) + std::to_string(number) + first.substr(end);
}

bool IsWhole(Files& files, const std::string& path, unsigned number, const ImagePart& first) {
  const auto part = ReadImagePart(files, path);
  return part && part->number == number && part->total == first.total && part->set == first.set &&
         files.size(path).value_or(0) >= part->end;
}

}  // namespace

std::optional<ImagePart> ReadImagePart(Files& files, const std::string& path) {
  const auto header = files.readPart(path, 0, kHeaderSize);
  if (!header || header->size() < kHeaderSize || !header->starts_with(kMark)) return std::nullopt;
  ImagePart part;
  part.number = static_cast<unsigned>(Number(*header, kNumberAt, 2));
  part.total = static_cast<unsigned>(Number(*header, kTotalAt, 2));
  part.set = header->substr(kSetAt, kSetSize);
  for (const std::size_t at : kTablesAt) {
    part.end = std::max(part.end, Number(*header, at, 7) + Number(*header, at + 8, 8));
  }
  return part;
}

std::string FirstPart(Files& files, const std::string& path, const ImagePart& part) {
  const std::string number = std::to_string(part.number);
  const std::size_t end = path.size() - std::min(path.size(), kEndingSize);
  if (!path.substr(0, end).ends_with(number)) return {};
  const std::string first = path.substr(0, end - number.size()) + path.substr(end);
  return IsWhole(files, first, 1, part) ? first : std::string();
}

std::vector<std::string> FurtherParts(Files& files, const std::string& first) {
  std::vector<std::string> parts;
  const auto header = ReadImagePart(files, first);
  for (unsigned number = 2; header && number <= header->total; ++number) {
    parts.push_back(PartPath(first, number));
  }
  return parts;
}

std::string LackingPart(Files& files, const std::string& first) {
  const auto header = ReadImagePart(files, first);
  if (!header || !IsWhole(files, first, 1, *header)) return first;
  unsigned number = 1;
  for (const std::string& part : FurtherParts(files, first)) {
    if (!IsWhole(files, part, ++number, *header)) return part;
  }
  return {};
}

std::uint64_t SplitImageSize(Files& files, const std::string& path) {
  const auto header = ReadImagePart(files, path);
  if (!header || header->number != 1) return 0;
  std::uint64_t sum = files.size(path).value_or(0);
  for (const std::string& part : FurtherParts(files, path)) {
    const auto size = files.size(part);
    if (!size) break;
    sum += *size;
  }
  return sum;
}

}  // namespace pavoline
