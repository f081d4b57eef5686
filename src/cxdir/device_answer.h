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
inline constexpr std::size_t kVendor = 12, kProduct = 16, kDescriptorBytes = 40;
// Styles.
inline constexpr std::uint32_t kStyleGpt = 1, kStyleRaw = 2;
}  // namespace answer

// Style and entries of a drive layout; a disk without a table gets none.
void ReadLayout(std::span<const std::byte> layout, Disk& disk);

// The model that a device descriptor names; empty for one that is cut short.
std::string ReadModel(std::span<const std::byte> descriptor);

}  // namespace pavoline
