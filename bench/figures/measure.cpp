// Times what a person waits for, from inside Windows: measure VERB ARGUMENT...; prints
// milliseconds.
//   startup INSTALLER SOURCE   start of the process until both lists are filled
//   source INSTALLER SOURCE    source entered in the idle window until its editions are listed
//   window                     start of a program with an empty window until it is shown
//   lines FILE.bat             a batch file of bare commands
//   consoles FILE.bat...       batch files one after the other, each in a hidden console of its own

#include <cstdio>

#include "bridge/unix_side.h"
#include "driver/main_window.h"
#include "driver/process.h"

namespace {

using bench::MainWindow;
using bench::Process;

constexpr int kTime = 60000;  // milliseconds

double Now() {
  LARGE_INTEGER count, frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

int Print(double start, bool reached) {
  if (!reached) return 1;
  printf("%.0f\n", Now() - start);
  return 0;
}

bool Listed(const MainWindow& main) {
  return !main.editions().items().empty() && !main.text(pavoline::kInstallPartition).text().empty();
}

int Startup(const std::string& installer, const std::string& source) {
  const double start = Now();
  const Process process("\"" + installer + "\" \"/source:" + source + "\"");
  const MainWindow main;
  const int result = Print(start, bench::WaitUntil(kTime, [&] { return Listed(main); }));
  process.end();
  return result;
}

int Source(const std::string& installer, const std::string& path) {
  const Process process("\"" + installer + "\"");
  const MainWindow main;
  bench::WaitUntil(kTime, [&] { return !main.text(pavoline::kInstallPartition).text().empty(); });
  const double start = Now();
  main.source().enterText(path);
  const int result = Print(start, bench::WaitUntil(kTime, [&] { return Listed(main); }));
  main.window().close();  // takes a mounted ISO away again
  if (!process.exitCode(kTime)) process.end();
  return result;
}

// The program with an empty window is this one.
int EmptyWindow(const std::string& title) {
  CreateWindowW(L"Static", bench::FromUtf8(title).c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                600, 300, nullptr, nullptr, nullptr, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

int WindowShown() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const double start = Now();
  const Process process("\"" + bench::ToUtf8(path) + "\" empty timed");
  const int result = Print(start, bench::WaitUntil(kTime, [] {
                             return bool{bench::TopWindow("measure.exe", "Static", "timed")};
                           }));
  process.end();
  return result;
}

int Lines(const std::string& batch) {
  const double start = Now();
  const Process process("cmd.exe /c \"" + batch + "\"");
  return Print(start, process.exitCode(10 * kTime).has_value());
}

int Consoles(const std::vector<std::string>& batches) {
  const double start = Now();
  for (const std::string& batch : batches) {
    if (batch.empty()) continue;
    std::wstring line = bench::FromUtf8(batch);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NEW_CONSOLE, nullptr,
                        nullptr, &startup, &started)) {
      return 1;
    }
    WaitForSingleObject(started.hProcess, kTime);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
  }
  return Print(start, true);
}

}  // namespace

int wmain(int count, wchar_t** values) {
  std::vector<std::string> arguments(4);
  for (int i = 1; i < std::min(count, 5); ++i) arguments[i - 1] = bench::ToUtf8(values[i]);
  if (arguments[0] == "startup") return Startup(arguments[1], arguments[2]);
  if (arguments[0] == "source") return Source(arguments[1], arguments[2]);
  if (arguments[0] == "window") return WindowShown();
  if (arguments[0] == "lines") return Lines(arguments[1]);
  if (arguments[0] == "consoles") return Consoles({arguments.begin() + 1, arguments.end()});
  if (arguments[0] == "empty") return EmptyWindow(arguments[1]);
  return 2;
}
