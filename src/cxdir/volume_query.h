#pragma once

#include <vector>

#include "cxdir/partition_lines.h"

namespace pavoline {

// The volumes that lie on disks: those with a letter in the order of the alphabet, once for each
// letter, then those without one. A volume that cannot be read keeps file system and label empty.
std::vector<Volume> QueryVolumes();

}  // namespace pavoline
