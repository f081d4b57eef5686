#include "win32/message_box.h"

// After windows.h, on which it leans.
#include <commctrl.h>

#include <vector>

#include "win32/owned.h"

namespace pavoline {
namespace {

struct OpenBox {
  std::wstring title;
  const BoxButton& further;
  int answer = IDOK;
  ULONGLONG end = 0;  // of GetTickCount64; 0: no limit
  ULONGLONG shownSeconds = 0;
  HWND window = nullptr;
  bool timeIsUp = false;
};

// All of the one thread that shows windows, the topmost last.
std::vector<OpenBox*> openBoxes;
// Waits for the box's window, which the system makes.
OwnedHook windowHook;

int ButtonOf(Answer answer) { return answer == kAnswerOk ? IDOK : IDCANCEL; }

ULONGLONG SecondsLeft(const OpenBox& box) {
  const ULONGLONG now = GetTickCount64();
  return box.end > now ? (box.end - now + 999) / 1000 : 0;
}

std::wstring TitleOf(const OpenBox& box) {
  return box.title + L" (" + std::to_wstring(box.shownSeconds) + L")";
}

void StopWaiting() { windowHook.reset(); }

// The system makes the buttons of a box as wide as its own texts need, and not always wider.
void WidenToText(HWND button, const std::wstring& text) {
  const HDC context = GetDC(button);
  const HGDIOBJ before =
      SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(button, WM_GETFONT, 0, 0)));
  RECT needed{};
  DrawTextW(context, text.c_str(), -1, &needed, DT_SINGLELINE | DT_CALCRECT);
  SelectObject(context, before);
  ReleaseDC(button, context);

  RECT area;
  GetWindowRect(button, &area);
  MapWindowPoints(nullptr, GetParent(button), reinterpret_cast<POINT*>(&area), 2);
  const LONG wanted = needed.right + needed.bottom;  // half a line's height at either side
  const LONG lacking = wanted - (area.right - area.left);
  if (lacking <= 0) return;
  SetWindowPos(button, nullptr, area.left - lacking / 2, area.top, wanted, area.bottom - area.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

// The help button, under a text of its own, does what the further button is for.
LRESULT CALLBACK BoxWithFurther(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR data) {
  const auto& further = *reinterpret_cast<const BoxButton*>(data);
  if (message == WM_COMMAND && LOWORD(wParam) == IDHELP) {
    further.press();
    return 0;
  }
  // Under Wine the buttons are given their places between activation and this.
  if (message == WM_SHOWWINDOW) WidenToText(GetDlgItem(window, IDHELP), further.text);
  return DefSubclassProc(window, message, wParam, lParam);
}

// The first dialog that the thread makes is the box. Its buttons are there when it is activated.
LRESULT CALLBACK NoteBox(int code, WPARAM wParam, LPARAM lParam) {
  const HHOOK hook = windowHook.get();
  OpenBox& box = *openBoxes.back();
  const auto window = reinterpret_cast<HWND>(wParam);
  if (code == HCBT_CREATEWND && box.window == nullptr) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    if (lstrcmpW(name, L"#32770") == 0) box.window = window;
  }
  if (code == HCBT_ACTIVATE && window == box.window) {
    SetDlgItemTextW(window, IDHELP, box.further.text.c_str());
    WidenToText(GetDlgItem(window, IDHELP), box.further.text);
    SetWindowSubclass(window, BoxWithFurther, 1, reinterpret_cast<DWORD_PTR>(&box.further));
    StopWaiting();
  }
  if (box.window != nullptr && box.further.text.empty()) StopWaiting();
  return CallNextHookEx(hook, code, wParam, lParam);
}

void Close(OpenBox& box) {
  box.timeIsUp = true;
  // The single button of a box goes by either name.
  for (const int id : {box.answer, IDOK, IDCANCEL}) {
    if (const HWND button = GetDlgItem(box.window, id)) {
      PostMessageW(box.window, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                   reinterpret_cast<LPARAM>(button));
      return;
    }
  }
  EndDialog(box.window, box.answer);
}

void CALLBACK CountDown(HWND, UINT, UINT_PTR, DWORD) {
  for (OpenBox* box : openBoxes) {
    if (box->end == 0 || box->window == nullptr) continue;
    const ULONGLONG left = SecondsLeft(*box);
    if (left != box->shownSeconds) {
      box->shownSeconds = left;
      SetWindowTextW(box->window, TitleOf(*box).c_str());
    }
    if (left != 0 || box != openBoxes.back()) continue;
    // What the further button has opened goes first.
    const HWND over = GetLastActivePopup(box->window);
    if (IsWindowEnabled(box->window) || over == box->window) {
      Close(*box);
    } else {
      PostMessageW(over, WM_CLOSE, 0, 0);
    }
  }
}

}  // namespace

Answer ShowMessageBox(HWND owner, const std::wstring& text, const std::wstring& title, UINT style,
                      const MessageLimit& limit, const BoxButton& further) {
  OpenBox box{title, further};
  box.answer = (style & MB_TYPEMASK) == MB_OK ? IDOK : ButtonOf(limit.answer);
  openBoxes.push_back(&box);
  UINT_PTR timer = 0;
  std::wstring shownTitle = title;
  StopWaiting();
  if (limit.seconds > 0 || !further.text.empty()) {
    windowHook.reset(SetWindowsHookExW(WH_CBT, NoteBox, nullptr, GetCurrentThreadId()));
  }
  if (limit.seconds > 0) {
    constexpr UINT kTickMs = 250;
    box.end = GetTickCount64() + static_cast<ULONGLONG>(limit.seconds) * 1000;
    box.shownSeconds = SecondsLeft(box);
    shownTitle = TitleOf(box);
    timer = SetTimer(nullptr, 0, kTickMs, CountDown);
  }
  if (!further.text.empty()) style |= MB_HELP;
  const int answer = MessageBoxW(owner, text.c_str(), shownTitle.c_str(), style);
  if (timer != 0) KillTimer(nullptr, timer);
  StopWaiting();
  openBoxes.pop_back();
  const bool failed = answer == 0 && limit.seconds > 0;
  return (box.timeIsUp || failed ? box.answer : answer) == IDOK ? kAnswerOk : kAnswerCancel;
}

}  // namespace pavoline
