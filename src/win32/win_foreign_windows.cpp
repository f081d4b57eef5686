#include "win32/win_foreign_windows.h"

#include <windows.h>

#include "win32/wide_text.h"

namespace pavoline {
namespace {

ForeignWindow Number(HWND window) { return reinterpret_cast<ForeignWindow>(window); }
HWND Window(ForeignWindow number) { return reinterpret_cast<HWND>(number); }

struct Listing {
  std::wstring className;
  std::vector<ForeignWindow> found;
};

BOOL CALLBACK NoteWindow(HWND window, LPARAM data) noexcept {
  auto& listing = *reinterpret_cast<Listing*>(data);
  wchar_t name[257] = L"";
  GetClassNameW(window, name, 257);
  if (lstrcmpiW(name, listing.className.c_str()) == 0) listing.found.push_back(Number(window));
  return TRUE;
}

}  // namespace

std::vector<ForeignWindow> WinForeignWindows::listByClass(const std::string& className) {
  Listing listing{Wide(className), {}};
  EnumWindows(NoteWindow, reinterpret_cast<LPARAM>(&listing));
  return listing.found;
}

ForeignWindow WinForeignWindows::findByTitle(const std::string& title) {
  return Number(FindWindowW(nullptr, Wide(title).c_str()));
}

bool WinForeignWindows::exists(ForeignWindow window) { return IsWindow(Window(window)) != 0; }

std::uint32_t WinForeignWindows::processOf(ForeignWindow window) {
  DWORD process = 0;
  GetWindowThreadProcessId(Window(window), &process);
  return process;
}

std::string WinForeignWindows::title(ForeignWindow window) {
  wchar_t text[255];
  const int length = GetWindowTextW(Window(window), text, 255);
  return Narrow(std::wstring_view(text, static_cast<std::size_t>(length)));
}

void WinForeignWindows::hide(ForeignWindow window) { ShowWindow(Window(window), SW_HIDE); }

void WinForeignWindows::minimize(ForeignWindow window) { CloseWindow(Window(window)); }

}  // namespace pavoline
