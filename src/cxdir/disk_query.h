#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "cxdir/partition_lines.h"

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

}  // namespace pavoline
