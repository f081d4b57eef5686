#include "cxdir/disk_query.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <winioctl.h>

#include <algorithm>
#include <cstddef>
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
static_assert(answer::kVendor == offsetof(Descriptor, VendorIdOffset) &&
              answer::kProduct == offsetof(Descriptor, ProductIdOffset) &&
              answer::kDescriptorBytes == sizeof(Descriptor));
static_assert(answer::kStyleGpt == PARTITION_STYLE_GPT && answer::kStyleRaw == PARTITION_STYLE_RAW);

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

std::string QueryModel(HANDLE device) {
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
  return ReadModel(answer);
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
  const std::wstring path = L"\\\\.\\PhysicalDrive" + std::to_wstring(number);
  // No access rights asked: none of the queries needs them, so the list works without elevation.
  Handle device(CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr));
  if (!device) return {std::nullopt, GetLastError()};

  const LayoutAnswer answer = QueryLayout(device.get());
  if (answer.error != 0) return {std::nullopt, answer.error};

  Disk disk;
  disk.number = number;
  disk.model = QueryModel(device.get());
  ReadLayout(answer.layout, disk);
  return {std::move(disk), 0};
}

}  // namespace pavoline
