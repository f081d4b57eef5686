#include "win32/win_environment.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <shellapi.h>

#include <algorithm>

#include "platform/paths.h"
#include "win32/dpi.h"
#include "win32/handle.h"
#include "win32/owned.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// Called for a font of the wanted name; one is enough.
int CALLBACK NoteFont(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
  *reinterpret_cast<bool*>(found) = true;
  return 0;
}

bool IsOpen(HANDLE output) {
  return output != nullptr && output != INVALID_HANDLE_VALUE &&
         GetFileType(output) != FILE_TYPE_UNKNOWN;
}

bool Write(HANDLE output, const std::string& text) {
  DWORD mode = 0, written = 0;
  if (GetConsoleMode(output, &mode) != 0) {
    const std::wstring wide = Wide(text);
    return WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
  }
  return WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

// The console of whoever started the process, only for as long as something is written: the
// programs that this one starts must not come to share it.
bool PrintToParent(const std::string& text) {
  if (!AttachConsole(ATTACH_PARENT_PROCESS)) return false;
  Handle console(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE, nullptr,
                             OPEN_EXISTING, 0, nullptr));
  const bool written = IsOpen(console.get()) && Write(console.get(), text);
  console.reset();
  FreeConsole();
  return written;
}

}  // namespace

std::string WinEnvironment::variable(const std::string& name) {
  const std::wstring wideName = Wide(name);
  const DWORD wanted = GetEnvironmentVariableW(wideName.c_str(), nullptr, 0);
  std::wstring value(wanted, L'\0');
  value.resize(wanted == 0 ? 0 : GetEnvironmentVariableW(wideName.c_str(), value.data(), wanted));
  return Narrow(value);
}

void WinEnvironment::setVariable(const std::string& name, const std::string& value) {
  SetEnvironmentVariableW(Wide(name).c_str(), Wide(value).c_str());
}

std::vector<std::string> WinEnvironment::arguments() {
  int count = 0;
  const LocalMemory<wchar_t**> parts(CommandLineToArgvW(GetCommandLineW(), &count));
  if (!parts) return {};
  std::vector<std::string> result;
  for (int i = 0; i < count; ++i) result.push_back(Narrow(parts.get()[i]));
  return result;
}

std::string WinEnvironment::programFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return ParentFolder(Narrow(path));
}

bool WinEnvironment::is64BitProcess() { return sizeof(void*) == 8; }

bool WinEnvironment::print(const std::string& text) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  // A handle may be left over from a console that is not this process's.
  return (IsOpen(output) && Write(output, text)) || PrintToParent(text);
}

// Under a BIOS there are no such variables, and the function says so; under UEFI it fails for want
// of this one, or of the right to ask.
Firmware WinEnvironment::firmware() {
  GetFirmwareEnvironmentVariableW(L"", L"{00000000-0000-0000-0000-000000000000}", nullptr, 0);
  return GetLastError() == ERROR_INVALID_FUNCTION ? Firmware::kBios : Firmware::kUefi;
}

unsigned WinEnvironment::systemLocale() { return GetSystemDefaultLCID(); }

unsigned WinEnvironment::setThreadLocale(unsigned locale) {
  SetThreadLocale(locale);
  return GetThreadLocale();
}

bool WinEnvironment::fontExists(const std::string& name) {
  const std::wstring face = Wide(name);
  LOGFONTW wanted{};
  if (face.empty() || face.size() >= LF_FACESIZE) return false;
  std::copy(face.begin(), face.end(), wanted.lfFaceName);
  wanted.lfCharSet = DEFAULT_CHARSET;

  bool found = false;
  const ScreenContext screen;
  EnumFontFamiliesExW(screen.get(), &wanted, NoteFont, reinterpret_cast<LPARAM>(&found), 0);
  return found;
}

ScreenRoom WinEnvironment::screenRoom() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  const int dpi = ScreenDpi();
  return {MulDiv(area.right - area.left, 1440, dpi), MulDiv(area.bottom - area.top, 1440, dpi)};
}

LocalTime WinEnvironment::now() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  return {time.wYear,   time.wMonth,  time.wDay,         time.wHour,
          time.wMinute, time.wSecond, time.wMilliseconds};
}

std::uint64_t WinEnvironment::milliseconds() { return GetTickCount64(); }

void WinEnvironment::reseedRandom() {
  LARGE_INTEGER counter{};
  QueryPerformanceCounter(&counter);
  FILETIME time{};
  GetSystemTimeAsFileTime(&time);
  randomState_ = static_cast<std::uint64_t>(counter.QuadPart) ^
                 (static_cast<std::uint64_t>(time.dwLowDateTime) << 32) ^ time.dwHighDateTime ^
                 GetCurrentProcessId();
}

double WinEnvironment::random() {
  // The generator known as splitmix64; its upper 53 bits fill a double's fraction.
  std::uint64_t z = randomState_ += 0x9E3779B97F4A7C15;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
  z ^= z >> 31;
  return static_cast<double>(z >> 11) / 9007199254740992.0;
}

}  // namespace pavoline
