#pragma once

// What disk devices answer, as bytes, taken to pieces. Portable. A device is believed no further
// than the bytes that it gave.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "cxdir/partition_lines.h"

namespace pavoline {

// Where things lie in the answers, in bytes; disk_query.cpp holds it to the system's structures.
namespace answer {
inline constexpr std::size_t kStyle = 0, kEntryCount = 4, kEntries = 48, kEntryBytes = 144;
// In an entry; the last two of an MBR disk and the one of a GPT disk share their place.
inline constexpr std::size_t kEntryStyle = 0, kOffset = 8, kLength = 16, kNumber = 24;
inline constexpr std::size_t kMbrType = 32, kMbrActive = 33, kGptType = 32;
// In a device descriptor, offsets of texts.
inline constexpr std::size_t kRemovable = 10, kVendor = 12, kProduct = 16, kSerial = 24;
inline constexpr std::size_t kDescriptorBytes = 40;
// Styles.
inline constexpr std::uint32_t kStyleMbr = 0, kStyleGpt = 1, kStyleRaw = 2;
}  // namespace answer

// Style and entries of a drive layout; a disk without a table gets none. False when the answer is
// cut short or names no style that is known: what there was of it is read all the same.
bool ReadLayout(std::span<const std::byte> layout, Disk& disk);

// The model that a device descriptor names; empty for one that is cut short.
std::string ReadModel(std::span<const std::byte> descriptor);

// What else a device descriptor tells. False for one that is cut short.
struct DeviceFacts {
  std::string serial;  // empty: none
  bool removable = false;
};
bool ReadDeviceFacts(std::span<const std::byte> descriptor, DeviceFacts& facts);

}  // namespace pavoline
