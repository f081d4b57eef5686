#include "win32/volume_facts.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <winioctl.h>

#include <cstddef>
#include <cstring>
#include <optional>
#include <vector>

#include "platform/paths.h"
#include "win32/handle.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// Where a volume begins; one that lies on several disks begins with the first that is listed.
std::optional<DISK_EXTENT> FirstExtent(const std::wstring& device) {
  // No access rights asked: the query needs none, and so no medium is waited for.
  const Handle volume(CreateFileW(device.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
  if (!volume) return std::nullopt;
  constexpr std::size_t kMostExtents = 128;
  std::vector<char> answer(offsetof(VOLUME_DISK_EXTENTS, Extents) +
                           kMostExtents * sizeof(DISK_EXTENT));
  DWORD size = 0;
  if (!DeviceIoControl(volume.get(), IOCTL_VOLUME_GET_VOLUME_DISK_EXTENTS, nullptr, 0,
                       answer.data(), static_cast<DWORD>(answer.size()), &size, nullptr) ||
      size < sizeof(VOLUME_DISK_EXTENTS)) {
    return std::nullopt;
  }
  VOLUME_DISK_EXTENTS extents;
  std::memcpy(&extents, answer.data(), sizeof extents);
  if (extents.NumberOfDiskExtents == 0) return std::nullopt;
  return extents.Extents[0];
}

}  // namespace

VolumeFacts VolumeFactsOfDrive(const std::string& drive) {
  VolumeFacts facts;
  const std::wstring root = Wide(WithBackslash(drive));
  wchar_t name[64] = L"";
  if (GetVolumeNameForVolumeMountPointW(root.c_str(), name, 64)) facts.name = Narrow(name);
  DWORD serial = 0;
  if (GetVolumeInformationW(root.c_str(), nullptr, 0, &serial, nullptr, nullptr, nullptr, 0)) {
    facts.serial = serial;
  }
  if (const auto extent = FirstExtent(L"\\\\.\\" + Wide(drive.substr(0, 2)))) {
    facts.disk = extent->DiskNumber + 1;
    facts.offset = static_cast<std::uint64_t>(extent->StartingOffset.QuadPart);
  }
  return facts;
}

}  // namespace pavoline
