#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "cxdir/disk_lines.h"

namespace pavoline {

// The numbers of the disks present, ascending. They may have gaps: disks come and go.
std::vector<std::uint32_t> DiskNumbers();

struct DiskAnswer {
  std::optional<Disk> disk;
  std::uint32_t error = 0;  // the system's error code when there is no disk
};

// Model and partition table of "\\.\PhysicalDriveN". A disk that gives no model is still a disk;
// one that gives no table (no medium, a device error) is not.
DiskAnswer QueryDisk(std::uint32_t number);

struct WholeDiskAnswer {
  std::optional<WholeDisk> disk;
  std::uint32_t error = 0;
};

// The same with all that tells whether the disk is empty. Whatever does not answer, or not whole,
// makes it a disk that cannot be read. Needs the right to read disks.
WholeDiskAnswer QueryWholeDisk(std::uint32_t number);

}  // namespace pavoline
