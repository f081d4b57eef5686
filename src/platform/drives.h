#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace pavoline {

// The platform's drive types; only those the program tells apart are named.
inline constexpr int kDriveUnknown = 0;
inline constexpr int kDriveNoRoot = 1;
inline constexpr int kDriveRemovable = 2;
inline constexpr int kDriveFixed = 3;
inline constexpr int kDriveCdRom = 5;

// Where a volume lies: both numbers as partition lists and imaging programs count, from 1.
struct VolumePosition {
  std::uint32_t disk = 0;
  std::uint32_t partition = 0;
};

// A drive is written "D:".
class Drives {
 public:
  virtual ~Drives() = default;

  virtual int type(const std::string& drive) = 0;  // one of the kDrive… values, or another
  virtual std::optional<std::uint64_t> freeBytes(const std::string& drive) = 0;

  // Nothing for a drive that lies on no partition of a disk.
  virtual std::optional<VolumePosition> position(const std::string& drive) = 0;
};

}  // namespace pavoline
