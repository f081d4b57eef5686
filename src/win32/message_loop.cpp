#include "win32/message_loop.h"

#include <algorithm>
#include <utility>

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
  callEnded();
  // A handler that is slower than its timer would keep the queue from ever being empty.
  constexpr int kMostAtOnce = 200;
  MSG message;
  for (int i = 0; i < kMostAtOnce && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
    handle(message);
  }
}

void MessageLoop::handleFor(long milliseconds) {
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
  handlePending();
  for (ULONGLONG now = GetTickCount64(); !ended_ && now < end; now = GetTickCount64()) {
    sleep(nullptr, static_cast<DWORD>(end - now));
    handlePending();
  }
}

void MessageLoop::waitFor(HANDLE handle, DWORD milliseconds) {
  sync();
  if (sleep(handle, milliseconds) != WAIT_OBJECT_0) handlePending();
}

void MessageLoop::runUntil(const std::function<bool()>& done) {
  sync();
  MSG message;
  while (!ended_ && !done()) {
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      handle(message);
    } else if (!done()) {  // a message that was sent, not posted, is handled inside the look
      sleep(nullptr, INFINITE);
    }
    callEnded();
  }
}

// Wakes for `handle`, which may be null, as WAIT_OBJECT_0, else for a watched process or a message.
DWORD MessageLoop::sleep(HANDLE handle, DWORD milliseconds) {
  std::vector<HANDLE> handles = processes_.handles(handle);
  if (handle != nullptr) handles.insert(handles.begin(), handle);
  const DWORD woken =
      MsgWaitForMultipleObjectsEx(static_cast<DWORD>(handles.size()), handles.data(), milliseconds,
                                  QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  return handle == nullptr ? WAIT_TIMEOUT : woken;
}

void MessageLoop::callEnded() {
  // An action that watches an ended process anew is called in the next round.
  const unsigned end = processes_.nextNumber();
  while (const ProcessWatch::Action action = processes_.takeEnded(end)) {
    guard(action);
    sync();
  }
}

void MessageLoop::handle(MSG& message) {
  if (message.message == WM_QUIT) {
    ended_ = true;
    return;
  }
  guard([&] {
    const auto takes = [&message](FormWindow* window) { return window->preTranslate(message); };
    if (std::none_of(windows_.rbegin(), windows_.rend(), takes)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    sync();
  });
}

void MessageLoop::tellFault(const char* text) {
  if (!onFault_) std::terminate();
  if (std::exchange(faulted_, true)) return;
  try {
    onFault_(text);
  } catch (...) {
    // There is nobody left to tell.
  }
}

FormWindow* MessageLoop::windowOf(const Form& form) const {
  const auto found = std::ranges::find_if(
      windows_, [&form](const FormWindow* window) { return window->shows(form); });
  return found == windows_.end() ? nullptr : *found;
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
