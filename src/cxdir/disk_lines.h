#pragma once

// The lines of the list of disks, one for each disk whatever lies on it. Portable: the queries
// themselves are in disk_query.h. Texts are UTF-8.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cxdir/partition_lines.h"

namespace pavoline {

// What is read of a disk at either end.
inline constexpr std::size_t kEndBytes = std::size_t{1} << 20;

// A disk with all that tells whether something lies on it.
struct WholeDisk {
  Disk disk;
  std::uint64_t bytes = 0;
  std::uint32_t sectorBytes = 512;
  std::string serial;  // empty when the disk gives none
  bool removable = false;
  bool writable = false;
  // The first and the last MiB; both empty on a disk that has no room for them.
  std::vector<std::byte> first, last;
};

// "empty", or what keeps the disk from being it: "read-only" (offline too), "partitions", "volume"
// (one that lies on the disk without a partition of it), "data". A disk is empty only when it has
// no table or one without any entry, and nothing but that table in its first and last MiB: a file
// system without a partition, a member of an array or the rest of a lost table is data.
std::string_view DiskState(const WholeDisk& whole, const std::vector<Volume>& volumes);

// One line, without its end: number from 0, bytes, model, serial number, "RAW", "MBR" or "GPT",
// partitions of any kind, "fixed" or "removable", state. The state stands last, so that a line that
// is cut short names no empty disk.
std::string DiskLine(const WholeDisk& whole, const std::vector<Volume>& volumes);

}  // namespace pavoline
