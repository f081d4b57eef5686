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

std::string BenchFolder() { return bench::ToUtf8(bench::Environment(L"PAVOLINE_BENCH")); }

std::map<std::string, int> ReadFaults() {
  std::map<std::string, int> faults;
  FILE* file = _wfopen(bench::WindowsForm(BenchFolder() + "/faults/ghost").c_str(), L"rb");
  if (!file) return faults;
  char name[32];
  int value = 0;
  while (fscanf(file, "%31s %d", name, &value) == 2) faults[name] = value;
  fclose(file);
  return faults;
}

int Fault(const std::map<std::string, int>& faults, const char* name, int otherwise) {
  const auto found = faults.find(name);
  return found == faults.end() ? otherwise : found->second;
}

// Disk and partition of a drive as the system numbers them, written as this program's addresses
// are.
std::wstring AddressOf(wchar_t letter) {
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

std::wstring DriveOf(const bench::GhostOrder& order) {
  if (!order.drive.empty()) return order.drive;
  for (wchar_t letter = L'D'; letter <= L'Z'; ++letter) {
    if (letter != L'X' && AddressOf(letter) == order.destination) return {letter, L':'};
  }
  return {};
}

HWND MakeWindow(const wchar_t* className, const std::wstring& title) {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = DefWindowProcW;
  windowClass.lpszClassName = className;
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  RegisterClassW(&windowClass);
  return CreateWindowW(className, title.c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 60, 420, 160,
                       nullptr, nullptr, nullptr, nullptr);
}

std::wstring ShortOwnPath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  GetShortPathNameW(path, path, MAX_PATH);
  return path;
}

void PumpFor(int milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
  }
}

int Finish(int result, const std::string& note) {
  bench::Journal("ghost", bench::ToUtf8(bench::RawArguments()), std::to_string(result), note);
  return result;
}

int Restore(const bench::GhostOrder& order, const std::wstring& drive) {
  const auto faults = ReadFaults();
  const int die = Fault(faults, "die", -1);
  const int last = Fault(faults, "last", 97);
  const int pace = Fault(faults, "pace", 30);
  if (const int code = Fault(faults, "exit", 0)) return Finish(code, "ERROR asked to end at once");
  PumpFor(Fault(faults, "late", 0));
  int unpacked = -1;
  bool done = false;
  std::thread unpacking([&] {
    unpacked = bench::RunUnix({"setpriv", "--pdeathsig", "KILL", "bash",
                               BenchFolder() + "/tools/ghost-restore", bench::UnixPath(order.image),
                               bench::ToUtf8(drive.substr(0, 1))});
    done = true;
  });
  MakeWindow(L"GhostConsole", ShortOwnPath());
  const HWND screen = MakeWindow(L"GhostScreen", L"Ghost");
  PumpFor(600);
  const int end = die >= 0 ? die : last;
  const int stay = Fault(faults, "stay", -1);
  for (int percent = 0; percent <= end; ++percent) {
    while (percent == stay) PumpFor(1000);
    if (!Fault(faults, "untitled", 0))
      SetWindowTextW(screen, (L"Ghost - " + std::to_wstring(percent) + L"%").c_str());
    PumpFor(pace);
  }
  while (die < 0 && !done) PumpFor(50);
  PumpFor(kHoldMilliseconds);
  if (die >= 0) {
    Finish(1, "ERROR asked to die");
    TerminateProcess(GetCurrentProcess(), 1);
  }
  unpacking.join();
  return Finish(unpacked, unpacked == 0 ? "" : "ERROR the image could not be unpacked");
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  const bench::GhostOrder order = bench::ReadGhostOrder(bench::RawArguments());
  if (!order.error.empty()) return Finish(1, "ERROR " + order.error);
  if (bench::UnixPath(order.image).empty()) return Finish(1, "ERROR the image does not exist");
  const std::wstring drive = DriveOf(order);
  if (drive.empty()) return Finish(1, "ERROR no such destination");
  return Restore(order, drive);
}
