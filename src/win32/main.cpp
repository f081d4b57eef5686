#include <windows.h>

#include "app/program.h"
#include "form/form1.h"
#include "win32/form_window.h"
#include "win32/win_platform.h"

namespace pavoline {
namespace {

// The process's exit code.
int Run() {
  WinPlatform windows;
  Form1 form;
  Program program(windows.platform(), form);
  windows.loop().onFault([&program](const std::string& what) { program.fault(what); });
  bool loaded = false;
  windows.loop().guard([&] { loaded = program.load(); });
  if (loaded) {
    FormWindow window(form, windows.loop(), nullptr);
    window.show();
    windows.loop().runUntil([&form] { return form.unloaded(); });
  }
  return program.exitCode();
}

}  // namespace
}  // namespace pavoline

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) { return pavoline::Run(); }
