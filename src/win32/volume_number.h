#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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

}  // namespace pavoline
