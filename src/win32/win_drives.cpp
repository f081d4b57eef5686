#include "win32/win_drives.h"

#include <windows.h>

#include "platform/paths.h"
#include "win32/handle.h"
#include "win32/volume_facts.h"
#include "win32/volume_number.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// A volume's own name, with a backslash at its end; empty when none lies there.
std::wstring VolumeAt(const VolumePosition& position) {
  wchar_t name[64] = L"";
  const VolumeSearchHandle search(FindFirstVolumeW(name, 64));
  if (!search) return {};
  do {
    const std::wstring volume = name;
    const auto number = VolumeNumberOfDevice(volume.substr(0, volume.size() - 1));
    if (number && number->disk + 1 == position.disk && number->partition == position.partition) {
      return volume;
    }
  } while (FindNextVolumeW(search.get(), name, 64));
  return {};
}

}  // namespace

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

VolumeFacts WinDrives::facts(const std::string& drive) { return VolumeFactsOfDrive(drive); }

bool WinDrives::assignLetter(const VolumePosition& position, const std::string& drive) {
  if (type(drive) != kDriveNoRoot) return false;
  const std::wstring volume = VolumeAt(position);
  return !volume.empty() &&
         SetVolumeMountPointW(Wide(WithBackslash(drive)).c_str(), volume.c_str()) != 0;
}

bool WinDrives::removeLetter(const std::string& drive) {
  return DeleteVolumeMountPointW(Wide(WithBackslash(drive)).c_str()) != 0;
}

}  // namespace pavoline
