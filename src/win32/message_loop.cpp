#include "win32/message_loop.h"

#include <algorithm>

#include "win32/form_window.h"

namespace pavoline {

void MessageLoop::remove(FormWindow& window) {
  windows_.erase(std::remove(windows_.begin(), windows_.end(), &window), windows_.end());
}

void MessageLoop::sync() {
  // By index: a window that is taken down leaves the list.
  for (std::size_t i = 0; i < windows_.size(); ++i) windows_[i]->sync();
}

void MessageLoop::handlePending() {
  sync();
  // A handler that is slower than its timer would keep the queue from ever being empty.
  constexpr int kMostAtOnce = 200;
  MSG message;
  for (int i = 0; i < kMostAtOnce && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
    handle(message);
  }
}

void MessageLoop::waitFor(HANDLE handle) {
  sync();
  const DWORD woken =
      MsgWaitForMultipleObjectsEx(1, &handle, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  if (woken == WAIT_OBJECT_0 + 1) handlePending();
}

void MessageLoop::runUntil(const std::function<bool()>& done) {
  sync();
  MSG message;
  while (!ended_ && !done() && GetMessageW(&message, nullptr, 0, 0) != -1) handle(message);
}

void MessageLoop::handle(MSG& message) {
  if (message.message == WM_QUIT) {
    ended_ = true;
    return;
  }
  const auto takes = [&message](FormWindow* window) { return window->preTranslate(message); };
  if (std::none_of(windows_.rbegin(), windows_.rend(), takes)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  sync();
}

HWND MessageLoop::mainWindow() const {
  return windows_.empty() ? nullptr : windows_.front()->handle();
}

HWND MessageLoop::dialogOwner() const {
  if (windows_.empty() || windows_.back()->handle() == nullptr) return nullptr;
  const HWND popup = GetLastActivePopup(windows_.back()->handle());
  return IsWindowVisible(popup) ? popup : nullptr;
}

}  // namespace pavoline
