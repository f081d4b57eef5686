#include <windows.h>

#include "app/program.h"
#include "form/form1.h"
#include "win32/form_window.h"
#include "win32/win_platform.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  pavoline::WinPlatform windows;
  pavoline::Form1 form;
  pavoline::Program program(windows.platform(), form);
  if (!program.load()) return 0;
  pavoline::FormWindow window(form, windows.loop(), nullptr);
  window.show();
  windows.loop().runUntil([&form] { return form.unloaded(); });
  return 0;
}
