#include <winsock2.h>
// After winsock2.h, on which they lean.
#include <iphlpapi.h>
#include <windows.h>

#include <cstdio>
#include <vector>

#include "win32/system_library.h"
#include "win32/win_environment.h"

namespace pavoline {
namespace {

constexpr DWORD kRawSmbios = 0x52534D42;  // 'RSMB'
constexpr ULONG kAddressBytes = 6;

// The list of adapters, which begins the bytes; empty when the system gives none.
std::vector<std::byte> AdapterList() {
  using Adapters = ULONG WINAPI(ULONG, ULONG, void*, IP_ADAPTER_ADDRESSES*, ULONG*);
  static const auto adapters = SystemFunction<Adapters>(L"iphlpapi.dll", "GetAdaptersAddresses");
  if (adapters == nullptr) return {};
  constexpr ULONG kSkip = GAA_FLAG_SKIP_UNICAST | GAA_FLAG_SKIP_ANYCAST | GAA_FLAG_SKIP_MULTICAST |
                          GAA_FLAG_SKIP_DNS_SERVER;
  // Another adapter may come between two calls.
  ULONG size = 16 * 1024;
  for (int attempt = 0; attempt < 4; ++attempt) {
    std::vector<std::byte> list(size);
    auto* first = reinterpret_cast<IP_ADAPTER_ADDRESSES*>(list.data());
    const ULONG error = adapters(AF_UNSPEC, kSkip, nullptr, first, &size);
    if (error == ERROR_SUCCESS) return list;
    if (error != ERROR_BUFFER_OVERFLOW) return {};
  }
  return {};
}

bool IsLinked(const IP_ADAPTER_ADDRESSES& adapter) {
  const bool known =
      adapter.IfType == IF_TYPE_ETHERNET_CSMACD || adapter.IfType == IF_TYPE_IEEE80211;
  return known && adapter.OperStatus == IfOperStatusUp &&
         adapter.PhysicalAddressLength == kAddressBytes;
}

}  // namespace

std::string WinEnvironment::firmwareTable() {
  const UINT size = GetSystemFirmwareTable(kRawSmbios, 0, nullptr, 0);
  std::string table(size, '\0');
  const UINT got = GetSystemFirmwareTable(kRawSmbios, 0, table.data(), size);
  table.resize(got <= size ? got : 0);
  return table;
}

std::string WinEnvironment::networkAddress() {
  const std::vector<std::byte> list = AdapterList();
  if (list.empty()) return {};
  for (const auto* adapter = reinterpret_cast<const IP_ADAPTER_ADDRESSES*>(list.data());
       adapter != nullptr; adapter = adapter->Next) {
    if (!IsLinked(*adapter)) continue;
    char digits[2 * kAddressBytes + 1] = {};
    for (ULONG i = 0; i < kAddressBytes; ++i) {
      std::snprintf(digits + 2 * i, 3, "%02X", adapter->PhysicalAddress[i]);
    }
    return digits;
  }
  return {};
}

}  // namespace pavoline
