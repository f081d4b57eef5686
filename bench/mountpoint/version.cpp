// This Wine refuses SetVolumeMountPoint and DeleteVolumeMountPoint without asking anybody. The
// bench's own version.dll, a library that the program loads when it starts, hands all its functions
// on and puts working ones in the place of those two: the bench's command moves the letter.

#include <windows.h>

#include <ddk/mountmgr.h>

#include <cstring>

#include "bridge/unix_side.h"

namespace {

// The name of the volume's folder, which the mount manager keeps as the volume's identifier.
std::string VolumeNamed(const std::wstring& link) {
  const HANDLE manager =
      CreateFileW(L"\\\\.\\MountPointManager", 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  OPEN_EXISTING, 0, nullptr);
  if (manager == INVALID_HANDLE_VALUE) return {};
  std::vector<char> question(sizeof(MOUNTMGR_MOUNT_POINT) + link.size() * sizeof(wchar_t));
  std::vector<char> answer(4096);
  auto* asked = reinterpret_cast<MOUNTMGR_MOUNT_POINT*>(question.data());
  asked->SymbolicLinkNameOffset = sizeof *asked;
  asked->SymbolicLinkNameLength = static_cast<USHORT>(link.size() * sizeof(wchar_t));
  std::memcpy(question.data() + sizeof *asked, link.data(), asked->SymbolicLinkNameLength);
  DWORD size = 0;
  const bool done = DeviceIoControl(manager, IOCTL_MOUNTMGR_QUERY_POINTS, question.data(),
                                    static_cast<DWORD>(question.size()), answer.data(),
                                    static_cast<DWORD>(answer.size()), &size, nullptr);
  CloseHandle(manager);
  const auto* points = reinterpret_cast<const MOUNTMGR_MOUNT_POINTS*>(answer.data());
  if (!done || points->NumberOfMountPoints == 0) return {};
  const std::string folder = answer.data() + points->MountPoints[0].UniqueIdOffset;
  return folder.substr(folder.find_last_of('/') + 1);
}

bool IsPresent(wchar_t letter) { return GetLogicalDrives() >> (towupper(letter) - L'A') & 1; }

BOOL Fail(DWORD error) {
  SetLastError(error);
  return FALSE;
}

BOOL GiveLetter(wchar_t letter, const std::string& volume) {
  const std::string run = bench::ToUtf8(bench::Environment(L"PAVOLINE_BENCH"));
  const std::string drive(1, static_cast<char>(towupper(letter)));
  const int result = bench::RunUnix({"bash", run + "/bench", "letter", run, drive, volume});
  bench::Journal("mount-point", drive + ": " + volume, std::to_string(result), "");
  return result == 0 || Fail(ERROR_GEN_FAILURE);
}

BOOL WINAPI SetMountPoint(const wchar_t* place, const wchar_t* volume) {
  if (!iswalpha(place[0]) || std::wcscmp(place + 1, L":\\") != 0) return Fail(ERROR_NOT_SUPPORTED);
  if (IsPresent(place[0])) return Fail(ERROR_DIR_NOT_EMPTY);
  std::wstring link = volume;
  if (link.size() < 5 || link.back() != L'\\') return Fail(ERROR_INVALID_NAME);
  link.pop_back();
  link[1] = L'?';  // the object's name, "\??\Volume{...}"
  const std::string name = VolumeNamed(link);
  return name.empty() ? Fail(ERROR_FILE_NOT_FOUND) : GiveLetter(place[0], name);
}

BOOL WINAPI DeleteMountPoint(const wchar_t* place) {
  if (!iswalpha(place[0]) || std::wcscmp(place + 1, L":\\") != 0) return Fail(ERROR_NOT_SUPPORTED);
  return IsPresent(place[0]) ? GiveLetter(place[0], "none") : Fail(ERROR_FILE_NOT_FOUND);
}

// The function begins with a jump to the other one.
template <typename Function>
void Replace(const wchar_t* library, const char* name, Function* other) {
  auto* code = reinterpret_cast<unsigned char*>(GetProcAddress(GetModuleHandleW(library), name));
  constexpr bool wide = sizeof(void*) == 8;
  const unsigned char load[] = {0x48, 0xB8}, jump[] = {0xFF, 0xE0};
  const auto target = reinterpret_cast<std::uintptr_t>(other);
  DWORD before = 0;
  if (!code || !VirtualProtect(code, 12, PAGE_EXECUTE_READWRITE, &before)) return;
  std::memcpy(code, load + !wide, 1 + wide);  // mov rax, target; in 32 bits mov eax, target
  std::memcpy(code + 1 + wide, &target, sizeof target);
  std::memcpy(code + 1 + wide + sizeof target, jump, sizeof jump);
  VirtualProtect(code, 12, before, &before);
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason != DLL_PROCESS_ATTACH) return TRUE;
  Replace(L"kernel32.dll", "SetVolumeMountPointW", SetMountPoint);
  Replace(L"kernelbase.dll", "DeleteVolumeMountPointW", DeleteMountPoint);
  return TRUE;
}
