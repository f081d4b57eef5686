#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "session/session.h"

namespace pavoline {

// A disk as the lister's list of disks has it (docs/formats.md). Two looks at the same disk in the
// same state are equal.
struct PhysicalDisk {
  std::uint32_t number = 0;  // from 0, as diskpart counts
  std::uint64_t bytes = 0;
  std::string model, serial;
  std::string style;  // "RAW", "MBR" or "GPT"
  bool removable = false;
  bool empty = false;  // nothing at all lies on it
  bool operator==(const PhysicalDisk&) const = default;
};

// Nothing for a line that has not all its fields, or one that cannot be what it should.
std::optional<PhysicalDisk> ReadDiskLine(const std::string& line);

// Lists afresh the disks that may be prepared: empty ones with room for a system, removable ones
// only where the settings want them, and never one that the running system or the program lies on.
// Nothing when no list could be had in two tries.
std::optional<std::vector<PhysicalDisk>> ListEmptyDisks(Session& session);

}  // namespace pavoline
