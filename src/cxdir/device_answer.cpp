#include "cxdir/device_answer.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace pavoline {
namespace {

using Bytes = std::span<const std::byte>;

// The caller has looked that it lies within the bytes.
template <class T>
T At(Bytes bytes, std::size_t offset) {
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

TableEntry EntryOf(Bytes bytes) {
  TableEntry entry;
  entry.number = At<std::uint32_t>(bytes, answer::kNumber);
  entry.offset = At<std::uint64_t>(bytes, answer::kOffset);
  entry.bytes = At<std::uint64_t>(bytes, answer::kLength);
  if (At<std::uint32_t>(bytes, answer::kEntryStyle) == answer::kStyleGpt) {
    entry.gptType = At<GptType>(bytes, answer::kGptType);
  } else {
    entry.mbrType = At<std::uint8_t>(bytes, answer::kMbrType);
    entry.active = At<std::uint8_t>(bytes, answer::kMbrActive) != 0;
  }
  return entry;
}

// The zero-terminated text at an offset of a descriptor; empty when it points nowhere.
std::string_view TextAt(Bytes descriptor, std::uint32_t offset) {
  if (offset == 0 || offset >= descriptor.size()) return {};
  const char* text = reinterpret_cast<const char*>(descriptor.data()) + offset;
  return {text, strnlen(text, descriptor.size() - offset)};
}

}  // namespace

bool ReadLayout(Bytes layout, Disk& disk) {
  if (layout.size() < answer::kEntries) return false;
  const auto style = At<std::uint32_t>(layout, answer::kStyle);
  if (style == answer::kStyleRaw) {
    disk.style = PartitionStyle::kRaw;
    return true;
  }
  disk.style = style == answer::kStyleGpt ? PartitionStyle::kGpt : PartitionStyle::kMbr;
  const Bytes entries = layout.subspan(answer::kEntries);
  const std::size_t named = At<std::uint32_t>(layout, answer::kEntryCount);
  const std::size_t count = std::min(named, entries.size() / answer::kEntryBytes);
  for (std::size_t i = 0; i < count; ++i) {
    disk.entries.push_back(EntryOf(entries.subspan(i * answer::kEntryBytes, answer::kEntryBytes)));
  }
  return count == named && (style == answer::kStyleGpt || style == answer::kStyleMbr);
}

std::string ReadModel(Bytes descriptor) {
  if (descriptor.size() < answer::kDescriptorBytes) return {};
  return ModelText(TextAt(descriptor, At<std::uint32_t>(descriptor, answer::kVendor)),
                   TextAt(descriptor, At<std::uint32_t>(descriptor, answer::kProduct)));
}

bool ReadDeviceFacts(Bytes descriptor, DeviceFacts& facts) {
  if (descriptor.size() < answer::kDescriptorBytes) return false;
  facts.serial = Trimmed(TextAt(descriptor, At<std::uint32_t>(descriptor, answer::kSerial)));
  facts.removable = At<std::uint8_t>(descriptor, answer::kRemovable) != 0;
  return true;
}

}  // namespace pavoline
