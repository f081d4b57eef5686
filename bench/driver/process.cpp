#include "driver/process.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <utility>

#include "bridge/unix_side.h"

namespace bench {
namespace {

template <typename Action>
int ForEachProcess(const std::string& program, Action action) {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  const std::wstring wanted = FromUtf8(program);
  int count = 0;
  for (BOOL more = Process32FirstW(snapshot, &entry); more;
       more = Process32NextW(snapshot, &entry)) {
    if (lstrcmpiW(entry.szExeFile, wanted.c_str()) != 0) continue;
    action(entry.th32ProcessID);
    ++count;
  }
  CloseHandle(snapshot);
  return count;
}

double Milliseconds(const FILETIME& time) {
  return (static_cast<double>(time.dwHighDateTime) * 4294967296.0 + time.dwLowDateTime) / 10000.0;
}

}  // namespace

bool IsRunning(const std::string& program) {
  return ForEachProcess(program, [](DWORD) {}) > 0;
}

int EndProcesses(const std::string& program) {
  return ForEachProcess(program, [](DWORD id) {
    const HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
    if (!process) return;
    TerminateProcess(process, 1);
    WaitForSingleObject(process, 5000);
    CloseHandle(process);
  });
}

Process::Process(const std::string& commandLine, const std::string& folder) {
  std::wstring line = FromUtf8(commandLine);
  const std::wstring start = FromUtf8(folder);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION information{};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      start.empty() ? nullptr : start.c_str(), &startup, &information)) {
    return;
  }
  CloseHandle(information.hThread);
  handle_ = information.hProcess;
}

Process::Process(Process&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

Process& Process::operator=(Process&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

Process::~Process() {
  if (handle_) CloseHandle(handle_);
}

bool Process::running() const { return handle_ && WaitForSingleObject(handle_, 0) == WAIT_TIMEOUT; }

std::optional<unsigned> Process::exitCode(int milliseconds) const {
  if (!handle_ || WaitForSingleObject(handle_, milliseconds) != WAIT_OBJECT_0) return std::nullopt;
  DWORD code = 0;
  GetExitCodeProcess(handle_, &code);
  return code;
}

void Process::end() const {
  if (!running()) return;
  TerminateProcess(handle_, 1);
  WaitForSingleObject(handle_, 5000);
}

double Process::processorMilliseconds() const {
  FILETIME created, ended, kernel, user;
  if (!handle_ || !GetProcessTimes(handle_, &created, &ended, &kernel, &user)) return 0;
  return Milliseconds(kernel) + Milliseconds(user);
}

size_t Process::peakMemory() const {
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof(counters);
  if (!handle_ || !GetProcessMemoryInfo(handle_, &counters, sizeof(counters))) return 0;
  return counters.PeakWorkingSetSize;
}

}  // namespace bench
