#pragma once

// The lines of the partition list, made from what the disks and volumes reported. Portable: the
// queries themselves are in disk_query.h. Texts are UTF-8.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "win32/volume_number.h"

namespace pavoline {

enum class PartitionStyle { kMbr, kGpt, kRaw };  // raw: no table

// A partition type of a GPT disk, in the order of bytes on the disk.
using GptType = std::array<std::uint8_t, 16>;

// One entry of a disk's partition table as the drive layout reports it.
struct TableEntry {
  std::uint32_t number = 0;  // from 1; 0 on a disk without a table, and for what is no partition
  std::uint64_t offset = 0;  // of its first byte on the disk
  std::uint64_t bytes = 0;
  std::uint8_t mbrType = 0;
  bool active = false;  // MBR only
  GptType gptType{};
};

struct Disk {
  std::uint32_t number = 0;  // from 0
  PartitionStyle style = PartitionStyle::kMbr;
  std::string model;
  std::vector<TableEntry> entries;  // in table order: on an MBR disk the first four are primary
};

// A mounted volume and the stretches of disks it lies on; once for each of its letters.
struct Volume {
  std::vector<VolumeExtent> extents;
  std::string root;  // "D:", empty without a letter
  std::string fileSystem;
  std::string label;
};

// Bytes in MB, from 1 GB on in GB, with two decimals, cut off rather than rounded, so that no text
// says more than there is. Whoever reads the list takes sizes in GB for places to install to, so
// there is no larger unit.
std::string SizeText(std::uint64_t bytes);

// "Primary", "Logical", "EFI", "MSR", "Recovery", "Dynamic", "Spaces", "Linux" or "Other".
// index is the entry's place in the table. The active partition of an MBR disk starts the machine
// even when it is of the recovery type, and is "Primary".
std::string_view PartitionKind(PartitionStyle style, const TableEntry& entry, std::size_t index);

// A disk's name from the vendor and product texts of its descriptor, padding removed and the
// bus names that some drivers put in the vendor's place left out.
std::string ModelText(std::string_view vendor, std::string_view product);

// Blanks at both ends removed, control characters turned into blanks.
std::string Trimmed(std::string_view text);

// Fields as one line, separated by tabs; what would end a field or the line becomes a blank.
std::string JoinFields(std::span<const std::string> fields);

// One line per partition, disk by disk in table order, without line ends; a partition with several
// letters has a line for each. A letter belongs to every partition that its volume lies on, by
// place and not by number: numbers of volumes are no more than what their devices answer.
std::vector<std::string> PartitionLines(const std::vector<Disk>& disks,
                                        const std::vector<Volume>& volumes);

}  // namespace pavoline
