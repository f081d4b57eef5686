#include "win32/volume_number.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <winioctl.h>

#include <algorithm>
#include <cstddef>

#include "win32/handle.h"

namespace pavoline {
namespace {

// No access rights asked: the queries need none, and so no medium is waited for.
Handle OpenVolume(const std::wstring& device) {
  return Handle(CreateFileW(device.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr));
}

// "\\.\D:"; empty when the root begins with no letter.
std::wstring DeviceOfDrive(std::string_view root) {
  if (root.empty()) return {};
  const char letter = static_cast<char>(root[0] & ~0x20);
  if (letter < 'A' || letter > 'Z') return {};
  return std::wstring(L"\\\\.\\") + static_cast<wchar_t>(letter) + L":";
}

std::vector<VolumeExtent> ReadExtents(const std::vector<std::byte>& answer) {
  constexpr std::size_t kHead = offsetof(VOLUME_DISK_EXTENTS, Extents);
  if (answer.size() < kHead) return {};
  const auto* head = reinterpret_cast<const VOLUME_DISK_EXTENTS*>(answer.data());
  const auto* extents = reinterpret_cast<const DISK_EXTENT*>(answer.data() + kHead);
  const std::size_t count = std::min<std::size_t>(head->NumberOfDiskExtents,
                                                  (answer.size() - kHead) / sizeof(DISK_EXTENT));
  std::vector<VolumeExtent> result;
  for (std::size_t i = 0; i < count; ++i) {
    result.push_back({extents[i].DiskNumber,
                      static_cast<std::uint64_t>(extents[i].StartingOffset.QuadPart),
                      static_cast<std::uint64_t>(extents[i].ExtentLength.QuadPart)});
  }
  return result;
}

}  // namespace

std::optional<VolumeNumber> VolumeNumberOfDevice(const std::wstring& device) {
  const Handle volume = OpenVolume(device);
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
  const std::wstring device = DeviceOfDrive(root);
  return device.empty() ? std::nullopt : VolumeNumberOfDevice(device);
}

std::vector<VolumeExtent> VolumeExtentsOfDevice(const std::wstring& device) {
  const Handle volume = OpenVolume(device);
  if (!volume) return {};
  constexpr std::size_t kLargest = 64 * 1024;
  for (std::size_t room = 512; room <= kLargest; room *= 2) {
    std::vector<std::byte> answer(room);
    DWORD size = 0;
    if (DeviceIoControl(volume.get(), IOCTL_VOLUME_GET_VOLUME_DISK_EXTENTS, nullptr, 0,
                        answer.data(), static_cast<DWORD>(room), &size, nullptr)) {
      answer.resize(size);
      return ReadExtents(answer);
    }
    const DWORD error = GetLastError();
    if (error != ERROR_MORE_DATA && error != ERROR_INSUFFICIENT_BUFFER) return {};
  }
  return {};
}

std::vector<VolumeExtent> VolumeExtentsOfDrive(std::string_view root) {
  const std::wstring device = DeviceOfDrive(root);
  return device.empty() ? std::vector<VolumeExtent>() : VolumeExtentsOfDevice(device);
}

}  // namespace pavoline
