#include "cxdir/disk_query.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <winioctl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "cxdir/device_answer.h"
#include "win32/handle.h"

namespace pavoline {
namespace {

using Buffer = std::vector<std::byte>;

using Layout = DRIVE_LAYOUT_INFORMATION_EX;
using Entry = PARTITION_INFORMATION_EX;
using Descriptor = STORAGE_DEVICE_DESCRIPTOR;
static_assert(answer::kStyle == offsetof(Layout, PartitionStyle) &&
              answer::kEntryCount == offsetof(Layout, PartitionCount) &&
              answer::kEntries == offsetof(Layout, PartitionEntry) &&
              answer::kEntryBytes == sizeof(Entry));
static_assert(answer::kEntryStyle == offsetof(Entry, PartitionStyle) &&
              answer::kOffset == offsetof(Entry, StartingOffset) &&
              answer::kLength == offsetof(Entry, PartitionLength) &&
              answer::kNumber == offsetof(Entry, PartitionNumber) &&
              answer::kMbrType == offsetof(Entry, Mbr.PartitionType) &&
              answer::kMbrActive == offsetof(Entry, Mbr.BootIndicator) &&
              answer::kGptType == offsetof(Entry, Gpt.PartitionType));
static_assert(answer::kRemovable == offsetof(Descriptor, RemovableMedia) &&
              answer::kVendor == offsetof(Descriptor, VendorIdOffset) &&
              answer::kProduct == offsetof(Descriptor, ProductIdOffset) &&
              answer::kSerial == offsetof(Descriptor, SerialNumberOffset) &&
              answer::kDescriptorBytes == sizeof(Descriptor));
static_assert(answer::kStyleMbr == PARTITION_STYLE_MBR &&
              answer::kStyleGpt == PARTITION_STYLE_GPT && answer::kStyleRaw == PARTITION_STYLE_RAW);

// As the system's headers have it; the compiler's do not.
constexpr DWORD kGetDiskAttributes =
    CTL_CODE(IOCTL_DISK_BASE, 0x3C, METHOD_BUFFERED, FILE_ANY_ACCESS);
struct DiskAttributes {
  DWORD version, reserved;
  DWORDLONG attributes;
};
constexpr DWORDLONG kOffline = 1, kReadOnly = 2;

// The names of all devices, each closed by a zero, one more at the end.
std::wstring DeviceNames() {
  std::wstring names(16 * 1024, L'\0');
  for (;;) {
    const DWORD length = QueryDosDeviceW(nullptr, names.data(), static_cast<DWORD>(names.size()));
    if (length != 0) {
      names.resize(length);
      return names;
    }
    if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) return {};
    names.resize(names.size() * 2);
  }
}

std::optional<std::uint32_t> NumberAfter(std::wstring_view prefix, std::wstring_view name) {
  if (name.size() <= prefix.size() || name.size() > prefix.size() + 6) return std::nullopt;
  if (name.substr(0, prefix.size()) != prefix) return std::nullopt;
  std::uint32_t number = 0;
  for (wchar_t digit : name.substr(prefix.size())) {
    if (digit < L'0' || digit > L'9') return std::nullopt;
    number = number * 10 + static_cast<std::uint32_t>(digit - L'0');
  }
  return number;
}

Handle OpenDisk(std::uint32_t number, DWORD access) {
  const std::wstring path = L"\\\\.\\PhysicalDrive" + std::to_wstring(number);
  return Handle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr));
}

Buffer QueryDescriptor(HANDLE device) {
  STORAGE_PROPERTY_QUERY query{};
  query.PropertyId = StorageDeviceProperty;
  query.QueryType = PropertyStandardQuery;
  Buffer answer(4096);
  DWORD size = 0;
  if (!DeviceIoControl(device, IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, answer.data(),
                       static_cast<DWORD>(answer.size()), &size, nullptr)) {
    return {};
  }
  answer.resize(size);
  return answer;
}

struct LayoutAnswer {
  Buffer layout;
  DWORD error = 0;
};

LayoutAnswer QueryLayout(HANDLE device) {
  constexpr std::size_t kLargest = 4 * 1024 * 1024;
  DWORD error = 0;
  for (std::size_t room = 32 * 1024; room <= kLargest; room *= 2) {
    Buffer answer(room);
    DWORD size = 0;
    if (DeviceIoControl(device, IOCTL_DISK_GET_DRIVE_LAYOUT_EX, nullptr, 0, answer.data(),
                        static_cast<DWORD>(answer.size()), &size, nullptr)) {
      answer.resize(size);
      return {std::move(answer), 0};
    }
    error = GetLastError();  // before anything else, the buffer's end included, can change it
    if (error != ERROR_INSUFFICIENT_BUFFER && error != ERROR_MORE_DATA) break;
  }
  return {{}, error};
}

// These three leave the system's error code when they fail.

bool QuerySize(HANDLE device, WholeDisk& whole) {
  std::array<std::byte, 256> answer{};  // more than the fixed part follows it
  DWORD size = 0;
  if (!DeviceIoControl(device, IOCTL_DISK_GET_DRIVE_GEOMETRY_EX, nullptr, 0, answer.data(),
                       static_cast<DWORD>(answer.size()), &size, nullptr)) {
    return false;
  }
  DISK_GEOMETRY_EX geometry{};
  std::memcpy(&geometry, answer.data(), sizeof geometry);
  whole.bytes = static_cast<std::uint64_t>(geometry.DiskSize.QuadPart);
  whole.sectorBytes = geometry.Geometry.BytesPerSector;
  const bool known = size >= offsetof(DISK_GEOMETRY_EX, Data) && geometry.DiskSize.QuadPart > 0 &&
                     whole.sectorBytes > 0 && kEndBytes % whole.sectorBytes == 0 &&
                     whole.bytes % whole.sectorBytes == 0;
  if (!known) SetLastError(ERROR_INVALID_DATA);
  return known;
}

bool QueryWritable(HANDLE device, WholeDisk& whole) {
  DWORD size = 0;
  whole.writable =
      DeviceIoControl(device, IOCTL_DISK_IS_WRITABLE, nullptr, 0, nullptr, 0, &size, nullptr) != 0;
  if (!whole.writable && GetLastError() != ERROR_WRITE_PROTECT) return false;
  DiskAttributes answer{};
  if (!DeviceIoControl(device, kGetDiskAttributes, nullptr, 0, &answer, sizeof answer, &size,
                       nullptr)) {
    return false;
  }
  if ((answer.attributes & (kOffline | kReadOnly)) != 0) whole.writable = false;
  if (size < sizeof answer) SetLastError(ERROR_INVALID_DATA);
  return size >= sizeof answer;
}

bool ReadAt(HANDLE device, std::uint64_t offset, Buffer& bytes) {
  // Disks want whole sectors, into memory that is aligned.
  alignas(4096) static std::array<std::byte, kEndBytes> room;
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  DWORD size = 0;
  if (!ReadFile(device, room.data(), static_cast<DWORD>(room.size()), &size, &place)) return false;
  if (size != room.size()) {
    SetLastError(ERROR_HANDLE_EOF);
    return false;
  }
  bytes.assign(room.begin(), room.end());
  return true;
}

bool ReadEnds(HANDLE device, WholeDisk& whole) {
  if (whole.bytes < 2 * kEndBytes) return true;
  return ReadAt(device, 0, whole.first) && ReadAt(device, whole.bytes - kEndBytes, whole.last);
}

}  // namespace

std::vector<std::uint32_t> DiskNumbers() {
  const std::wstring names = DeviceNames();
  std::vector<std::uint32_t> numbers;
  for (std::size_t at = 0; at < names.size();) {
    const std::wstring_view name(names.c_str() + at);
    if (const auto number = NumberAfter(L"PhysicalDrive", name)) numbers.push_back(*number);
    at += name.size() + 1;
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

DiskAnswer QueryDisk(std::uint32_t number) {
  // No access rights asked: none of the queries needs them, so the list works without elevation.
  const Handle device = OpenDisk(number, 0);
  if (!device) return {std::nullopt, GetLastError()};

  const LayoutAnswer answer = QueryLayout(device.get());
  if (answer.error != 0) return {std::nullopt, answer.error};

  Disk disk;
  disk.number = number;
  disk.model = ReadModel(QueryDescriptor(device.get()));
  ReadLayout(answer.layout, disk);
  return {std::move(disk), 0};
}

WholeDiskAnswer QueryWholeDisk(std::uint32_t number) {
  const Handle device = OpenDisk(number, GENERIC_READ);
  if (!device) return {std::nullopt, GetLastError()};

  const LayoutAnswer answer = QueryLayout(device.get());
  if (answer.error != 0) return {std::nullopt, answer.error};
  WholeDisk whole;
  whole.disk.number = number;
  const Buffer descriptor = QueryDescriptor(device.get());
  whole.disk.model = ReadModel(descriptor);
  DeviceFacts facts;
  if (!ReadLayout(answer.layout, whole.disk) || !ReadDeviceFacts(descriptor, facts)) {
    return {std::nullopt, ERROR_INVALID_DATA};
  }
  whole.serial = facts.serial;
  whole.removable = facts.removable;
  if (!QuerySize(device.get(), whole) || !QueryWritable(device.get(), whole) ||
      !ReadEnds(device.get(), whole)) {
    return {std::nullopt, GetLastError()};
  }
  return {std::move(whole), 0};
}

}  // namespace pavoline
