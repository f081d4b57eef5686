#include "bridge/unix_side.h"

#include <windows.h>
#include <winioctl.h>

#include <cstring>

namespace bench {
namespace {

using SpawnFunction = LONG(CDECL*)(char* const argv[], int wait);
using UnixNameFunction = char*(CDECL*)(const wchar_t* path);

template <typename Function>
Function WineFunction(const wchar_t* module, const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(module), name)));
}

// Wine's mount manager takes this record; the offsets count from its start.
struct UnixDrive {
  ULONG size;
  ULONG type;
  ULONG fileSystem;
  DWORD serial;
  ULONGLONG device;
  WCHAR letter;
  USHORT mountPointOffset;
  USHORT deviceOffset;
  USHORT labelOffset;
};

constexpr DWORD kDefineUnixDrive =
    CTL_CODE('m', 32, METHOD_BUFFERED, FILE_READ_ACCESS | FILE_WRITE_ACCESS);

ULONG DriveType(const std::string& kind) {
  if (kind == "cdrom") return DRIVE_CDROM;
  if (kind == "removable") return DRIVE_REMOVABLE;
  if (kind == "network") return DRIVE_REMOTE;
  return kind == "none" ? DRIVE_NO_ROOT_DIR : DRIVE_FIXED;
}

std::string OneLine(std::string text) {
  for (char& letter : text) {
    if (letter == '\n' || letter == '\r' || letter == '\t') letter = ' ';
  }
  return text;
}

}  // namespace

std::string ToUtf8(const std::wstring& text) {
  if (text.empty()) return {};
  const int length = static_cast<int>(text.size());
  std::string result(
      WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(),
                      static_cast<int>(result.size()), nullptr, nullptr);
  return result;
}

std::wstring FromUtf8(const std::string& text) {
  if (text.empty()) return {};
  const int length = static_cast<int>(text.size());
  std::wstring result(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(),
                      static_cast<int>(result.size()));
  return result;
}

std::string UnixPath(const std::wstring& windowsPath) {
  const auto function = WineFunction<UnixNameFunction>(L"kernel32.dll", "wine_get_unix_file_name");
  if (!function) return {};
  char* found = function(windowsPath.c_str());
  if (!found) return {};
  std::string result = found;
  HeapFree(GetProcessHeap(), 0, found);
  return result;
}

std::wstring WindowsForm(const std::string& unixPath) {
  std::wstring result = L"\\\\?\\unix" + FromUtf8(unixPath);
  for (wchar_t& letter : result) {
    if (letter == L'/') letter = L'\\';
  }
  return result;
}

int RunUnix(const std::vector<std::string>& arguments) {
  const auto spawn = WineFunction<SpawnFunction>(L"ntdll.dll", "__wine_unix_spawnvp");
  if (!spawn) return -1;
  std::vector<char*> pointers;
  for (const std::string& argument : arguments) {
    pointers.push_back(const_cast<char*>(argument.c_str()));
  }
  pointers.push_back(nullptr);
  return spawn(pointers.data(), 1);
}

bool DefineDrive(wchar_t letter, const std::string& kind, const std::string& folder) {
  const HANDLE manager = CreateFileW(L"\\\\.\\MountPointManager", GENERIC_READ | GENERIC_WRITE, 0,
                                     nullptr, OPEN_EXISTING, 0, nullptr);
  if (manager == INVALID_HANDLE_VALUE) return false;
  std::vector<char> buffer(sizeof(UnixDrive) + folder.size() + 1);
  UnixDrive drive{};
  drive.size = static_cast<ULONG>(buffer.size());
  drive.type = DriveType(kind);
  drive.letter = letter;
  if (kind != "none") drive.mountPointOffset = sizeof(UnixDrive);
  std::memcpy(buffer.data(), &drive, sizeof(drive));
  std::memcpy(buffer.data() + sizeof(drive), folder.c_str(), folder.size() + 1);
  const bool done = DeviceIoControl(manager, kDefineUnixDrive, buffer.data(), drive.size, nullptr,
                                    0, nullptr, nullptr);
  CloseHandle(manager);
  return done;
}

std::wstring Environment(const wchar_t* name) {
  const DWORD size = GetEnvironmentVariableW(name, nullptr, 0);
  if (size == 0) return {};
  std::wstring value(size, L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), size));
  return value;
}

void Journal(const std::string& tool, const std::string& arguments, const std::string& result,
             const std::string& note) {
  const std::wstring path = WindowsForm(ToUtf8(Environment(L"PAVOLINE_BENCH")) + "/journal");
  const HANDLE file =
      CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  OPEN_ALWAYS, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  const std::string line = OneLine(tool) + "\t" + OneLine(arguments) + "\t" + OneLine(result) +
                           "\t" + OneLine(note) + "\n";
  DWORD written = 0;
  WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  CloseHandle(file);
}

std::wstring RawArguments() {
  const wchar_t* text = GetCommandLineW();
  bool quoted = false;
  while (*text && (quoted || (*text != L' ' && *text != L'\t'))) {
    if (*text == L'"') quoted = !quoted;
    ++text;
  }
  while (*text == L' ' || *text == L'\t') ++text;
  return text;
}

}  // namespace bench
