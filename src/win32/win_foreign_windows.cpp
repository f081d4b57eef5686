#include "win32/win_foreign_windows.h"

#include <windows.h>

#include "win32/wide_text.h"

namespace pavoline {
namespace {

ForeignWindow Number(HWND window) { return reinterpret_cast<ForeignWindow>(window); }
HWND Window(ForeignWindow number) { return reinterpret_cast<HWND>(number); }

}  // namespace

ForeignWindow WinForeignWindows::findByClass(const std::string& className) {
  return Number(FindWindowW(Wide(className).c_str(), nullptr));
}

ForeignWindow WinForeignWindows::findByTitle(const std::string& title) {
  return Number(FindWindowW(nullptr, Wide(title).c_str()));
}

std::string WinForeignWindows::title(ForeignWindow window) {
  wchar_t text[255];
  const int length = GetWindowTextW(Window(window), text, 255);
  return Narrow(std::wstring_view(text, static_cast<std::size_t>(length)));
}

void WinForeignWindows::hide(ForeignWindow window) { ShowWindow(Window(window), SW_HIDE); }

void WinForeignWindows::minimize(ForeignWindow window) { CloseWindow(Window(window)); }

}  // namespace pavoline
