#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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

// What the system knows a mounted volume by. Unknown parts are empty or zero.
struct VolumeFacts {
  std::string name;          // the volume's own name, "\\?\Volume{...}\"
  std::uint32_t serial = 0;  // given by the last formatting
  std::uint32_t disk = 0;    // from 1
  std::uint64_t offset = 0;  // of its first byte on that disk
  bool operator==(const VolumeFacts&) const = default;
};

// A drive is written "D:".
class Drives {
 public:
  virtual ~Drives() = default;

  virtual int type(const std::string& drive) = 0;  // one of the kDrive… values, or another
  virtual std::optional<std::uint64_t> freeBytes(const std::string& drive) = 0;

  // The same for several drives at once, in their order. Waits no longer than that for all of them
  // together; a drive that has not answered by then has nothing.
  virtual std::vector<std::optional<std::uint64_t>> freeBytesSoon(
      const std::vector<std::string>& drives, int milliseconds) = 0;

  // Nothing for a drive that lies on no partition of a disk.
  virtual std::optional<VolumePosition> position(const std::string& drive) = 0;

  virtual VolumeFacts facts(const std::string& drive) = 0;

  // Gives the volume at a position a letter that is free. False when there is no such volume, or
  // the system refuses.
  virtual bool assignLetter(const VolumePosition& position, const std::string& drive) = 0;
  // Takes a volume's letter away; its files stay.
  virtual bool removeLetter(const std::string& drive) = 0;
};

}  // namespace pavoline
