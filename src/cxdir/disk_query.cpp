#include "cxdir/disk_query.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <winioctl.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "win32/handle.h"

namespace pavoline {
namespace {

using Buffer = std::vector<std::byte>;

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

// The zero-terminated text at an offset of a descriptor; empty when it points nowhere.
std::string_view TextAt(const Buffer& descriptor, DWORD offset) {
  if (offset == 0 || offset >= descriptor.size()) return {};
  const char* text = reinterpret_cast<const char*>(descriptor.data()) + offset;
  return {text, strnlen(text, descriptor.size() - offset)};
}

std::string QueryModel(HANDLE device) {
  STORAGE_PROPERTY_QUERY query{};
  query.PropertyId = StorageDeviceProperty;
  query.QueryType = PropertyStandardQuery;
  Buffer answer(4096);
  DWORD size = 0;
  if (!DeviceIoControl(device, IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, answer.data(),
                       static_cast<DWORD>(answer.size()), &size, nullptr) ||
      size < sizeof(STORAGE_DEVICE_DESCRIPTOR)) {
    return {};
  }
  answer.resize(size);
  const auto* descriptor = reinterpret_cast<const STORAGE_DEVICE_DESCRIPTOR*>(answer.data());
  return ModelText(TextAt(answer, descriptor->VendorIdOffset),
                   TextAt(answer, descriptor->ProductIdOffset));
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

TableEntry EntryOf(const PARTITION_INFORMATION_EX& partition) {
  TableEntry entry;
  entry.number = partition.PartitionNumber;
  entry.offset = static_cast<std::uint64_t>(partition.StartingOffset.QuadPart);
  entry.bytes = static_cast<std::uint64_t>(partition.PartitionLength.QuadPart);
  if (partition.PartitionStyle == PARTITION_STYLE_GPT) {
    static_assert(sizeof partition.Gpt.PartitionType == sizeof entry.gptType);
    std::memcpy(entry.gptType.data(), &partition.Gpt.PartitionType, sizeof entry.gptType);
  } else {
    entry.mbrType = partition.Mbr.PartitionType;
    entry.active = partition.Mbr.BootIndicator != FALSE;
  }
  return entry;
}

void ReadLayout(const Buffer& layout, Disk& disk) {
  constexpr std::size_t kHead = offsetof(DRIVE_LAYOUT_INFORMATION_EX, PartitionEntry);
  if (layout.size() < kHead) return;
  const auto* head = reinterpret_cast<const DRIVE_LAYOUT_INFORMATION_EX*>(layout.data());
  if (head->PartitionStyle == PARTITION_STYLE_RAW) return;
  disk.style =
      head->PartitionStyle == PARTITION_STYLE_GPT ? PartitionStyle::kGpt : PartitionStyle::kMbr;
  const std::size_t count = std::min<std::size_t>(
      head->PartitionCount, (layout.size() - kHead) / sizeof(PARTITION_INFORMATION_EX));
  // Not by way of head->PartitionEntry, an array of one for the compiler.
  const auto* entries = reinterpret_cast<const PARTITION_INFORMATION_EX*>(layout.data() + kHead);
  for (std::size_t i = 0; i < count; ++i) disk.entries.push_back(EntryOf(entries[i]));
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
