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

double now() {
  LARGE_INTEGER count, frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

int print(double start, bool reached) {
  if (!reached) return 1;
  printf("%.0f\n", now() - start);
  return 0;
}

bool listed(const MainWindow& main) {
  return !main.editions().items().empty() && !main.text(pavoline::kInstallPartition).text().empty();
}

int startup(const std::string& installer, const std::string& source) {
  const double start = now();
  const Process process("\"" + installer + "\" \"/source:" + source + "\"");
  const MainWindow main;
  const int result = print(start, bench::waitUntil(kTime, [&] { return listed(main); }));
  process.end();
  return result;
}

int source(const std::string& installer, const std::string& path) {
  const Process process("\"" + installer + "\"");
  const MainWindow main;
  bench::waitUntil(kTime, [&] { return !main.text(pavoline::kInstallPartition).text().empty(); });
  const double start = now();
  main.source().enterText(path);
  const int result = print(start, bench::waitUntil(kTime, [&] { return listed(main); }));
  main.window().close();  // takes a mounted ISO away again
  if (!process.exitCode(kTime)) process.end();
  return result;
}

// The program with an empty window is this one.
int emptyWindow(const std::string& title) {
  CreateWindowW(L"Static", bench::fromUtf8(title).c_str(), WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                600, 300, nullptr, nullptr, nullptr, nullptr);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}

int window() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const double start = now();
  const Process process("\"" + bench::toUtf8(path) + "\" empty timed");
  const int result = print(start, bench::waitUntil(kTime, [] {
                             return bool{bench::findWindow("measure.exe", "Static", "timed")};
                           }));
  process.end();
  return result;
}

int lines(const std::string& batch) {
  const double start = now();
  const Process process("cmd.exe /c \"" + batch + "\"");
  return print(start, process.exitCode(10 * kTime).has_value());
}

int consoles(const std::vector<std::string>& batches) {
  const double start = now();
  for (const std::string& batch : batches) {
    if (batch.empty()) continue;
    std::wstring line = bench::fromUtf8(batch);
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
  return print(start, true);
}

}  // namespace

int wmain(int count, wchar_t** values) {
  std::vector<std::string> arguments(4);
  for (int i = 1; i < std::min(count, 5); ++i) arguments[i - 1] = bench::toUtf8(values[i]);
  if (arguments[0] == "startup") return startup(arguments[1], arguments[2]);
  if (arguments[0] == "source") return source(arguments[1], arguments[2]);
  if (arguments[0] == "window") return window();
  if (arguments[0] == "lines") return lines(arguments[1]);
  if (arguments[0] == "consoles") return consoles({arguments.begin() + 1, arguments.end()});
  if (arguments[0] == "empty") return emptyWindow(arguments[1]);
  return 2;
}
