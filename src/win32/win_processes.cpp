#include "win32/win_processes.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <tlhelp32.h>

#include <utility>

#include "win32/child_streams.h"
#include "win32/handle.h"
#include "win32/message_loop.h"
#include "win32/system_library.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

class WinStartedProgram : public StartedProgram {
 public:
  WinStartedProgram(Handle process, DWORD id, MessageLoop& loop)
      : process_(std::move(process)), id_(id), loop_(loop) {}
  ~WinStartedProgram() override { loop_.processes().remove(watch_); }

  bool running() override { return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT; }
  std::uint32_t id() override { return id_; }
  std::optional<std::uint32_t> exitCode() override {
    DWORD code = 0;
    if (running() || !GetExitCodeProcess(process_.get(), &code)) return std::nullopt;
    return code;
  }
  void whenEnded(std::function<void()> action) override {
    loop_.processes().remove(watch_);
    watch_ = loop_.processes().add(process_.get(), std::move(action));
  }
  void waitHandlingEvents(std::chrono::milliseconds atMost) override {
    loop_.waitFor(process_.get(), static_cast<DWORD>(atMost.count()));
  }

 private:
  Handle process_;
  DWORD id_;
  MessageLoop& loop_;
  unsigned watch_ = 0;  // none
};

bool IsFile(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

// While it stands, this thread sees System32 as it is.
class UnredirectedSystem32 {
 public:
  explicit UnredirectedSystem32(bool wanted) {
    // Both are looked up first: where System32 is seen as it is, no library of it can be loaded.
    using Disable = BOOL WINAPI(void**);
    static const auto disable =
        SystemFunction<Disable>(L"kernel32.dll", "Wow64DisableWow64FsRedirection");
    static const auto revert =
        SystemFunction<Revert>(L"kernel32.dll", "Wow64RevertWow64FsRedirection");
    if (wanted && disable != nullptr && revert != nullptr && disable(&old_)) revert_ = revert;
  }
  ~UnredirectedSystem32() {
    if (revert_ != nullptr) revert_(old_);
  }
  UnredirectedSystem32(const UnredirectedSystem32&) = delete;
  UnredirectedSystem32& operator=(const UnredirectedSystem32&) = delete;

 private:
  using Revert = BOOL WINAPI(void*);
  Revert* revert_ = nullptr;
  void* old_ = nullptr;
};

}  // namespace

std::unique_ptr<StartedProgram> WinProcesses::start(const StartRequest& request) {
  const UnredirectedSystem32 view(request.fromOwnSystem32);
  std::wstring command = Wide(request.commandLine);
  if (IsFile(command)) command = L'"' + command + L'"';
  const std::wstring program = Wide(request.program);
  STARTUPINFOEXW startup{};
  startup.StartupInfo.cb = sizeof startup.StartupInfo;
  startup.StartupInfo.dwFlags = STARTF_USESHOWWINDOW;
  startup.StartupInfo.wShowWindow = static_cast<WORD>(request.mode);
  ChildStreams streams(request.outputFile, request.errorsOnly);
  // A console of its own, so that the show mode holds for it as well.
  const DWORD flags = CREATE_NEW_CONSOLE | streams.describe(startup);
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(program.empty() ? nullptr : program.c_str(), command.data(), nullptr, nullptr,
                      streams ? TRUE : FALSE, flags, nullptr, nullptr, &startup.StartupInfo,
                      &started)) {
    return nullptr;
  }
  Handle process(started.hProcess);
  Handle thread(started.hThread);
  return std::make_unique<WinStartedProgram>(std::move(process), started.dwProcessId, loop_);
}

std::vector<RunningProcess> WinProcesses::list() {
  std::vector<RunningProcess> processes;
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return processes;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
       more = Process32NextW(snapshot.get(), &entry)) {
    processes.push_back({entry.th32ProcessID, Narrow(entry.szExeFile)});
  }
  return processes;
}

void WinProcesses::terminate(std::uint32_t id) {
  const Handle process(OpenProcess(PROCESS_TERMINATE, FALSE, id));
  if (process) TerminateProcess(process.get(), 1);
}

void WinProcesses::handleEvents() { loop_.handlePending(); }

void WinProcesses::handleEventsFor(long milliseconds) { loop_.handleFor(milliseconds); }

}  // namespace pavoline
