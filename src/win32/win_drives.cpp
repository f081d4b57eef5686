#include "win32/win_drives.h"

#include <windows.h>

#include "platform/paths.h"
#include "win32/volume_number.h"
#include "win32/wide_text.h"

namespace pavoline {

int WinDrives::type(const std::string& drive) {
  return static_cast<int>(GetDriveTypeW(Wide(WithBackslash(drive)).c_str()));
}

std::optional<std::uint64_t> WinDrives::freeBytes(const std::string& drive) {
  ULARGE_INTEGER available{};
  if (!GetDiskFreeSpaceExW(Wide(WithBackslash(drive)).c_str(), &available, nullptr, nullptr)) {
    return std::nullopt;
  }
  return available.QuadPart;
}

std::optional<VolumePosition> WinDrives::position(const std::string& drive) {
  const std::optional<VolumeNumber> number = VolumeNumberOfDrive(drive);
  if (!number || number->partition == 0) return std::nullopt;
  return VolumePosition{number->disk + 1, number->partition};
}

}  // namespace pavoline
