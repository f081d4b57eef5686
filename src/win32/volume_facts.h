#pragma once

#include <string>

#include "platform/drives.h"

namespace pavoline {

// Asks the system about the volume that a letter ("D:") leads to. What it does not answer, as for a
// drive without a medium, stays empty or zero.
VolumeFacts VolumeFactsOfDrive(const std::string& drive);

}  // namespace pavoline
