// Stand-in for the partition restore program: a window of class "GhostScreen" whose title counts up
// while the bench's own image is unpacked onto the destination, and a console window titled with
// the program's short path. The file faults/ghost may hold "die PERCENT", "last PERCENT" (the last
// title before it ends well), "pace MS" per percent, "late MS" (before the window shows), "exit
// CODE" (at once), "stay PERCENT" (for ever), "untitled 1" (never a percentage).

#include <windows.h>
#include <winioctl.h>

#include <cstdio>
#include <map>
#include <thread>

#include "bridge/unix_side.h"
#include "ghost/command_line.h"

namespace {

constexpr int kHoldMilliseconds = 1600;  // longer than any poll: the last title is surely seen

std::string benchFolder() { return bench::toUtf8(bench::environment(L"PAVOLINE_BENCH")); }

std::map<std::string, int> readFaults() {
  std::map<std::string, int> faults;
  FILE* file = _wfopen(bench::windowsForm(benchFolder() + "/faults/ghost").c_str(), L"rb");
  if (!file) return faults;
  char name[32];
  int value = 0;
  while (fscanf(file, "%31s %d", name, &value) == 2) faults[name] = value;
  fclose(file);
  return faults;
}

int fault(const std::map<std::string, int>& faults, const char* name, int otherwise) {
  const auto found = faults.find(name);
  return found == faults.end() ? otherwise : found->second;
}

// Disk and partition of a drive as the system numbers them, written as this program's addresses
// are.
std::wstring addressOf(wchar_t letter) {
  const std::wstring path = std::wstring(L"\\\\.\\") + letter + L":";
  const HANDLE drive = CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                   OPEN_EXISTING, 0, nullptr);
  if (drive == INVALID_HANDLE_VALUE) return {};
  STORAGE_DEVICE_NUMBER number{};
  DWORD size = 0;
  const bool known = DeviceIoControl(drive, IOCTL_STORAGE_GET_DEVICE_NUMBER, nullptr, 0, &number,
                                     sizeof(number), &size, nullptr);
  CloseHandle(drive);
  if (!known) return {};
  return std::to_wstring(number.DeviceNumber + 1) + L":" + std::to_wstring(number.PartitionNumber);
}

std::wstring driveOf(const bench::GhostOrder& order) {
  if (!order.drive.empty()) return order.drive;
  for (wchar_t letter = L'D'; letter <= L'Z'; ++letter) {
    if (letter != L'X' && addressOf(letter) == order.destination) return {letter, L':'};
  }
  return {};
}

HWND makeWindow(const wchar_t* className, const std::wstring& title) {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = DefWindowProcW;
  windowClass.lpszClassName = className;
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  RegisterClassW(&windowClass);
  return CreateWindowW(className, title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 60, 420, 160,
                       nullptr, nullptr, nullptr, nullptr);
}

std::wstring shortOwnPath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  GetShortPathNameW(path, path, MAX_PATH);
  return path;
}

void pumpFor(int milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
}

int finish(int result, const std::string& note) {
  bench::journal("ghost", bench::toUtf8(bench::rawArguments()), std::to_string(result), note);
  return result;
}

int restore(const bench::GhostOrder& order, const std::wstring& drive) {
  const auto faults = readFaults();
  const int die = fault(faults, "die", -1);
  const int last = fault(faults, "last", 97);
  const int pace = fault(faults, "pace", 30);
  if (const int code = fault(faults, "exit", 0)) return finish(code, "ERROR asked to end at once");
  pumpFor(fault(faults, "late", 0));
  int unpacked = -1;
  bool done = false;
  std::thread unpacking([&] {
    unpacked = bench::runUnix({"setpriv", "--pdeathsig", "KILL", "bash",
                               benchFolder() + "/tools/ghost-restore", bench::unixPath(order.image),
                               bench::toUtf8(drive.substr(0, 1))});
    done = true;
  });
  makeWindow(L"GhostConsole", shortOwnPath());
  const HWND screen = makeWindow(L"GhostScreen", L"Ghost");
  pumpFor(600);
  const int end = die >= 0 ? die : last;
  const int stay = fault(faults, "stay", -1);
  for (int percent = 0; percent <= end; ++percent) {
    while (percent == stay) pumpFor(1000);
    if (!fault(faults, "untitled", 0))
      SetWindowTextW(screen, (L"Ghost - " + std::to_wstring(percent) + L"%").c_str());
    pumpFor(pace);
  }
  while (die < 0 && !done) pumpFor(50);
  pumpFor(kHoldMilliseconds);
  if (die >= 0) {
    finish(1, "ERROR asked to die");
    TerminateProcess(GetCurrentProcess(), 1);
  }
  unpacking.join();
  return finish(unpacked, unpacked == 0 ? "" : "ERROR the image could not be unpacked");
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  const bench::GhostOrder order = bench::readGhostOrder(bench::rawArguments());
  if (!order.error.empty()) return finish(1, "ERROR " + order.error);
  if (bench::unixPath(order.image).empty()) return finish(1, "ERROR the image does not exist");
  const std::wstring drive = driveOf(order);
  if (drive.empty()) return finish(1, "ERROR no such destination");
  return restore(order, drive);
}
