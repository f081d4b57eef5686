#include "win32/system_library.h"

#include <string>

namespace pavoline {

HMODULE SystemLibrary(const wchar_t* name) {
  wchar_t folder[MAX_PATH];
  const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return nullptr;
  return LoadLibraryW((std::wstring(folder, length) + L'\\' + name).c_str());
}

void RestrictLibrarySearch() {
  SetDllDirectoryW(L"");
  using SetDirectories = BOOL WINAPI(DWORD);
  constexpr DWORD kSystem32Only = 0x00000800;
  if (auto* set = SystemFunction<SetDirectories>(L"kernel32.dll", "SetDefaultDllDirectories")) {
    set(kSystem32Only);
  }
}

}  // namespace pavoline
