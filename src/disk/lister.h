#pragma once

#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace pavoline {

// Runs the lister of partitions and disks with this argument, through TempDir\base.log: its lines
// that hold something, without their ends. Nothing when no log came, or the window has gone.
std::optional<std::vector<std::string>> RunLister(Workplace& workplace, const std::string& argument,
                                                  const std::string& base);

}  // namespace pavoline
