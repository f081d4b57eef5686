// What comes from the user and the system into the form.
#include <windows.h>
// After windows.h, on which it leans.
#include <shellapi.h>

#include <algorithm>

#include "win32/form_window.h"
#include "win32/message_loop.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

int ShiftKeys() {
  int shift = kShiftNone;
  if (GetKeyState(VK_SHIFT) < 0) shift += kShiftKey;
  if (GetKeyState(VK_CONTROL) < 0) shift += kControlKey;
  if (GetKeyState(VK_MENU) < 0) shift += kAltKey;
  return shift;
}

// An open list takes Enter and Escape itself.
bool ListIsOpen(HWND focus) {
  for (const HWND window : {focus, GetParent(focus)}) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    if (lstrcmpiW(name, WC_COMBOBOXW) == 0 && SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0) != 0) {
      return true;
    }
  }
  return false;
}

}  // namespace

LRESULT CALLBACK FormWindow::windowProcedure(HWND handle, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* window =
        static_cast<FormWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    window->handle_ = handle;
    SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
  }
  auto* window = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
  if (window == nullptr) return DefWindowProcW(handle, message, wParam, lParam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
    window->onDestroyed();
    return 0;
  }
  LRESULT result = 0;
  window->loop_.guard([&] { result = window->handleMessage(message, wParam, lParam); });
  return result;
}

LRESULT FormWindow::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  // Menus, message boxes and file dialogs run loops of their own, so what a handler changed is
  // shown here and not by the program's loop alone.
  switch (message) {
    case WM_COMMAND:
      onCommand(wParam, lParam);
      loop_.sync();
      return 0;
    case WM_NOTIFY:
      onNotify(*reinterpret_cast<const NMHDR*>(lParam));
      loop_.sync();
      return 0;
    case WM_TIMER:
      onTimer(wParam);
      loop_.sync();
      return 0;
    case WM_CLOSE:
      form_.close();
      loop_.sync();
      return 0;
    case WM_SYSCOMMAND:
      if (!onSystemCommand(wParam)) break;
      loop_.sync();
      return 0;
    case WM_DROPFILES:
      onDropFiles(wParam);
      loop_.sync();
      return 0;
    case WM_INITMENU:
      menu_.opens(handle_);
      break;
    case WM_ACTIVATE:
      onActivate(LOWORD(wParam) != WA_INACTIVE);
      return 0;
    case WM_DPICHANGED:
      onDpiChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case DM_GETDEFID: {
      const ControlView* view = viewOf(form_.defaultButton);
      return view == nullptr ? 0 : MAKELRESULT(GetDlgCtrlID(view->handle()), DC_HASDEFID);
    }
    default:
      break;
  }
  return DefWindowProcW(handle_, message, wParam, lParam);
}

void FormWindow::onCommand(WPARAM wParam, LPARAM lParam) {
  if (syncing_) return;  // the echo of what sync() did
  if (lParam == 0) {
    // From the keyboard: Escape, or Enter with the default button disabled. Or from a submenu of
    // the system menu, whose commands some systems (Wine) report this way.
    if (LOWORD(wParam) == IDCANCEL) {
      pressEscape();
    } else if (LOWORD(wParam) != IDOK) {
      onSystemCommand(LOWORD(wParam));
    }
    return;
  }
  if (ControlView* view = viewOf(reinterpret_cast<HWND>(lParam))) view->onCommand(HIWORD(wParam));
}

void FormWindow::onNotify(const NMHDR& header) {
  if (syncing_) return;
  if (ControlView* view = viewOf(header.hwndFrom)) view->onNotify(header);
}

void FormWindow::onTimer(WPARAM number) {
  if (number >= 1 && number <= form_.timers().size()) form_.timers()[number - 1]->tick();
}

bool FormWindow::onSystemCommand(WPARAM wParam) {
  // The system uses the low four bits of its own commands, which begin at 0xF000.
  const WPARAM command = wParam & 0xFFFF;
  const int id = static_cast<int>(command >= 0xF000 ? command & 0xFFF0 : command);
  return form_.onSystemCommand && form_.onSystemCommand(id);
}

void FormWindow::onDropFiles(WPARAM wParam) {
  OwnedDrop drop(reinterpret_cast<HDROP>(wParam));
  std::vector<std::string> paths;
  const UINT count = DragQueryFileW(drop.get(), 0xFFFFFFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::wstring path(DragQueryFileW(drop.get(), i, nullptr, 0) + 1, L'\0');
    path.resize(DragQueryFileW(drop.get(), i, path.data(), static_cast<UINT>(path.size())));
    paths.push_back(Narrow(path));
  }
  drop.reset();
  if (form_.onDropFiles && !paths.empty()) form_.onDropFiles(paths);
}

void FormWindow::onDpiChanged(int dpi, const RECT& suggested) {
  dpi_ = dpi;
  SetWindowPos(handle_, nullptr, suggested.left, suggested.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  refreshStyle();
}

void FormWindow::onActivate(bool active) {
  if (active) {
    if (shown_) keepFocusAlive();
  } else if (const HWND focus = GetFocus(); focus != refuge_ && IsChild(handle_, focus)) {
    lastFocus_ = focus;
  }
}

void FormWindow::onDestroyed() {
  handle_ = nullptr;
  if (!isMain()) return;
  loop_.end();
  PostQuitMessage(0);  // for the loops inside the system's own dialogs
}

bool FormWindow::preTranslate(MSG& message) {
  if (handle_ == nullptr || (message.hwnd != handle_ && !IsChild(handle_, message.hwnd))) {
    return false;
  }
  if (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) {
    const int key = static_cast<int>(message.wParam);
    const bool listKey = key == VK_RETURN || key == VK_ESCAPE;
    if (!(listKey && ListIsOpen(message.hwnd))) {
      if (form_.onKeyDown && form_.onKeyDown(key, ShiftKeys())) return true;
      ControlView* view = viewOf(message.hwnd);
      const bool enter = key == VK_RETURN && message.message == WM_KEYDOWN;
      if (enter && view != nullptr && view->onEnter()) return true;
    }
  }
  return handle_ == nullptr || IsDialogMessageW(handle_, &message) != 0;
}

bool FormWindow::pressEscape() {
  if (form_.cancelButton != nullptr) {
    form_.cancelButton->press();
  } else if (!isMain()) {
    form_.close();
  }
  return true;
}

}  // namespace pavoline
