#pragma once

#include <vector>

#include "cxdir/partition_lines.h"

namespace pavoline {

// The volumes that lie on partitions of disks: those with a letter in the order of the alphabet,
// then those without one. A volume that cannot be read keeps file system and label empty.
std::vector<Volume> QueryVolumes();

}  // namespace pavoline
