#include "driver/window.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstring>
#include <set>

#include "bridge/unix_side.h"

namespace bench {
namespace {

constexpr UINT kAnswerTime = 2000;  // milliseconds

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return tolower(c); });
  return text;
}

std::string WithoutAccessKey(std::string text) {
  text.erase(std::remove(text.begin(), text.end(), '&'), text.end());
  return text;
}

std::set<DWORD> ProcessesNamed(const std::string& program) {
  std::set<DWORD> ids;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32FirstW(snapshot, &entry); more;
       more = Process32NextW(snapshot, &entry)) {
    if (Lower(ToUtf8(entry.szExeFile)) == Lower(program)) ids.insert(entry.th32ProcessID);
  }
  CloseHandle(snapshot);
  return ids;
}

BOOL CALLBACK Collect(HWND handle, LPARAM list) {
  reinterpret_cast<std::vector<Window>*>(list)->emplace_back(handle);
  return TRUE;
}

void SendKey(int virtualKey, bool up) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = static_cast<WORD>(virtualKey);
  input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
  SendInput(1, &input, sizeof(input));
}

}  // namespace

LRESULT Window::ask(UINT message, WPARAM wParam, LPARAM lParam) const {
  DWORD_PTR result = 0;
  if (!SendMessageTimeoutW(handle_, message, wParam, lParam, SMTO_NORMAL, kAnswerTime, &result))
    return 0;
  return static_cast<LRESULT>(result);
}

std::string Window::text() const {
  std::wstring buffer(32768, L'\0');
  buffer.resize(ask(WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data())));
  return ToUtf8(buffer);
}

std::string Window::className() const {
  wchar_t name[256] = {};
  GetClassNameW(handle_, name, 256);
  return ToUtf8(name);
}

RECT Window::rectangle() const {
  RECT result{};
  GetWindowRect(handle_, &result);
  return result;
}

bool Window::drawn() const {
  ask(WM_NULL, 0, 0);  // answered between what it does
  const auto pending = [](const Window& window) {
    return window.visible() && GetUpdateRect(window.handle(), nullptr, FALSE);
  };
  const std::vector<Window> inside = children();
  return !pending(*this) && std::none_of(inside.begin(), inside.end(), pending);
}

std::vector<Window> Window::children() const {
  std::vector<Window> found;
  EnumChildWindows(handle_, Collect, reinterpret_cast<LPARAM>(&found));
  return found;
}

Window Window::child(int id) const {
  for (const Window& window : children()) {
    if (window.id() == id) return window;
  }
  return {};
}

Window Window::childOfClass(const std::string& className) const {
  for (const Window& window : children()) {
    if (Lower(window.className()) == Lower(className)) return window;
  }
  return {};
}

Window Window::childWithText(const std::string& part) const {
  for (const Window& window : children()) {
    if (WithoutAccessKey(window.text()).find(WithoutAccessKey(part)) != std::string::npos)
      return window;
  }
  return {};
}

Window Window::editField() const {
  if (Lower(className()) == "edit") return *this;
  return childOfClass("Edit");
}

void Window::enterText(const std::string& text) const {
  const Window field = editField();
  const std::wstring wide = FromUtf8(text);
  field.ask(EM_SETSEL, 0, -1);
  field.ask(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(wide.c_str()));
}

void Window::typeText(const std::string& text) const {
  const Window field = editField();
  field.ask(EM_SETSEL, 0, -1);
  for (wchar_t letter : FromUtf8(text)) {
    PostMessageW(field.handle(), WM_CHAR, letter, 1);
    Sleep(5);
  }
}

void Window::click() const { PostMessageW(handle_, BM_CLICK, 0, 0); }

bool Window::ticked() const { return ask(BM_GETCHECK, 0, 0) == BST_CHECKED; }

void Window::tick(bool on) const {
  if (ticked() == on) return;
  click();
  WaitUntil(kAnswerTime, [&] { return ticked() == on; });
}

std::vector<std::string> Window::items() const {
  const bool combo = Lower(className()).find("combobox") != std::string::npos;
  const LRESULT count = ask(combo ? CB_GETCOUNT : LB_GETCOUNT, 0, 0);
  std::vector<std::string> result;
  for (LRESULT i = 0; i < count; ++i) {
    const LRESULT length = ask(combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN, i, 0);
    std::wstring line(std::max<LRESULT>(length, 0) + 1, L'\0');
    ask(combo ? CB_GETLBTEXT : LB_GETTEXT, i, reinterpret_cast<LPARAM>(line.data()));
    result.push_back(ToUtf8(line.c_str()));
  }
  return result;
}

int Window::selected() const {
  const bool combo = Lower(className()).find("combobox") != std::string::npos;
  return static_cast<int>(ask(combo ? CB_GETCURSEL : LB_GETCURSEL, 0, 0));
}

void Window::tellParent(int notification) const {
  PostMessageW(GetParent(handle_), WM_COMMAND, MAKEWPARAM(id(), notification),
               reinterpret_cast<LPARAM>(handle_));
}

void Window::select(int index) const {
  const bool combo = Lower(className()).find("combobox") != std::string::npos;
  ask(combo ? CB_SETCURSEL : LB_SETCURSEL, index, 0);
  // Setting the choice by message tells nobody; a person's pick would have.
  tellParent(combo ? CBN_SELCHANGE : LBN_SELCHANGE);
  if (combo) tellParent(CBN_SELENDOK);
}

int Window::progress() const { return static_cast<int>(ask(PBM_GETPOS, 0, 0)); }

void Window::key(int virtualKey) const {
  GUITHREADINFO information{};
  information.cbSize = sizeof(information);
  const DWORD thread = GetWindowThreadProcessId(handle_, nullptr);
  HWND target = handle_;
  if (GetGUIThreadInfo(thread, &information) && information.hwndFocus)
    target = information.hwndFocus;
  PostMessageW(target, WM_KEYDOWN, virtualKey, 1);
  PostMessageW(target, WM_KEYUP, virtualKey, 0xC0000001);
}

void Window::chord(std::vector<int> virtualKeys) const {
  SetForegroundWindow(handle_);
  WaitUntil(kAnswerTime, [&] { return GetForegroundWindow() == handle_; });
  for (int virtualKey : virtualKeys) SendKey(virtualKey, false);
  std::reverse(virtualKeys.begin(), virtualKeys.end());
  for (int virtualKey : virtualKeys) SendKey(virtualKey, true);
}

void Window::systemCommand(int id) const { PostMessageW(handle_, WM_SYSCOMMAND, id, 0); }

void Window::close() const { PostMessageW(handle_, WM_CLOSE, 0, 0); }

// The list must lie in the receiver's memory, as the shell arranges for a real drop.
void Window::dropFiles(const std::vector<std::string>& paths) const {
  std::wstring names;
  for (const std::string& path : paths) names += FromUtf8(path) + L'\0';
  names += L'\0';
  std::vector<char> data(sizeof(DROPFILES) + names.size() * sizeof(wchar_t));
  DROPFILES header{};
  header.pFiles = sizeof(DROPFILES);
  header.fWide = TRUE;
  std::memcpy(data.data(), &header, sizeof(header));
  std::memcpy(data.data() + sizeof(header), names.data(), names.size() * sizeof(wchar_t));
  DWORD process = 0;
  GetWindowThreadProcessId(handle_, &process);
  const HANDLE target = OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
  void* memory =
      VirtualAllocEx(target, nullptr, data.size(), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  WriteProcessMemory(target, memory, data.data(), data.size(), nullptr);
  CloseHandle(target);
  PostMessageW(handle_, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
}

std::vector<Window> WindowsOf(const std::string& program) {
  std::vector<Window> all, result;
  EnumWindows(Collect, reinterpret_cast<LPARAM>(&all));
  const std::set<DWORD> processes = ProcessesNamed(program);
  for (const Window& window : all) {
    DWORD process = 0;
    GetWindowThreadProcessId(window.handle(), &process);
    if (processes.count(process)) result.push_back(window);
  }
  return result;
}

Window TopWindow(const std::string& program, const std::string& className,
                 const std::string& title) {
  for (const Window& window : WindowsOf(program)) {
    if (!window.visible()) continue;
    if (!className.empty() && Lower(window.className()) != Lower(className)) continue;
    if (window.text().find(title) != std::string::npos) return window;
  }
  return {};
}

bool WaitUntil(int milliseconds, const std::function<bool()>& condition) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  while (!condition()) {
    if (GetTickCount64() >= end) return false;
    Sleep(20);
  }
  return true;
}

}  // namespace bench
