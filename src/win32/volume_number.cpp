#include "win32/volume_number.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <winioctl.h>

#include "win32/handle.h"

namespace pavoline {

std::optional<VolumeNumber> VolumeNumberOfDevice(const std::wstring& device) {
  // No access rights asked: the query needs none, and so no medium is waited for.
  Handle volume(CreateFileW(device.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr));
  if (!volume) return std::nullopt;

  STORAGE_DEVICE_NUMBER number{};
  DWORD size = 0;
  if (!DeviceIoControl(volume.get(), IOCTL_STORAGE_GET_DEVICE_NUMBER, nullptr, 0, &number,
                       sizeof number, &size, nullptr) ||
      size < sizeof number) {
    return std::nullopt;
  }
  // CD-ROM drives count from 0 as well and would pass for partitions of the first disks.
  if (number.DeviceType != FILE_DEVICE_DISK) return std::nullopt;

  constexpr DWORD kNotPartitionable = 0xFFFFFFFF;
  return VolumeNumber{number.DeviceNumber,
                      number.PartitionNumber == kNotPartitionable ? 0 : number.PartitionNumber};
}

std::optional<VolumeNumber> VolumeNumberOfDrive(std::string_view root) {
  if (root.empty()) return std::nullopt;
  const char letter = static_cast<char>(root[0] & ~0x20);
  if (letter < 'A' || letter > 'Z') return std::nullopt;
  return VolumeNumberOfDevice(std::wstring(L"\\\\.\\") + static_cast<wchar_t>(letter) + L":");
}

}  // namespace pavoline
