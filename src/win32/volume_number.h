#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pavoline {

// Where a volume lies, numbered as its device reports it.
struct VolumeNumber {
  std::uint32_t disk = 0;       // from 0: the N of "\\.\PhysicalDriveN"
  std::uint32_t partition = 0;  // from 1; 0 when the disk carries no partition table
};

// The volume behind a drive root ("D:", "D:\", "d"); only the letter counts. Nothing for what
// lies on no disk: a CD-ROM, a network drive, a folder with a letter of its own, a free letter.
std::optional<VolumeNumber> VolumeNumberOfDrive(std::string_view root);

// The same by device path without a closing backslash ("\\.\D:", "\\?\Volume{...}").
std::optional<VolumeNumber> VolumeNumberOfDevice(const std::wstring& device);

// A stretch of a disk that a volume lies on, in bytes.
struct VolumeExtent {
  std::uint32_t disk = 0;  // from 0
  std::uint64_t offset = 0;
  std::uint64_t bytes = 0;
  bool operator==(const VolumeExtent&) const = default;
};

// The stretches of a volume in the order of its contents: one for an ordinary volume, several for
// one that spans partitions or disks; by drive root or device path as above. None for what lies on
// no disk. Dynamic volumes, which carry no numbers, have them as well.
std::vector<VolumeExtent> VolumeExtentsOfDrive(std::string_view root);
std::vector<VolumeExtent> VolumeExtentsOfDevice(const std::wstring& device);

}  // namespace pavoline
