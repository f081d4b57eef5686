// A program that records in the bench's journal that it was started, under its own file name:
// plug-ins and companion tools of the bench. "-wait MS" as its first argument keeps it running.

#include <windows.h>

#include <cstdlib>

#include "bridge/unix_side.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::string program = bench::ToUtf8(path);
  const std::string arguments = bench::ToUtf8(bench::RawArguments());
  if (arguments.rfind("-wait ", 0) == 0) Sleep(strtoul(arguments.c_str() + 6, nullptr, 10));
  bench::Journal(program.substr(program.find_last_of('\\') + 1), arguments, "0", program);
  return 0;
}
