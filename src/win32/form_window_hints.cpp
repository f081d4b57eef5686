// What a window tells beside its controls: tooltips, names for screen readers, a menu at a button.
#include "win32/form_window.h"
#include "win32/spoken_name.h"
#include "win32/wide_text.h"

namespace pavoline {

void FormWindow::syncTooltips() {
  for (auto& view : views_) {
    const std::string& text = view->control().tooltip();
    std::string& shown = shownTooltips_[view.get()];
    if (shown == text) continue;
    showTooltip(*view, text);
    shown = text;
  }
}

void FormWindow::showTooltip(ControlView& view, const std::string& text) {
  std::wstring wide = Wide(text);
  for (const HWND window : {view.handle(), view.inner()}) {
    if (window == nullptr) continue;
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = handle_;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    tool.lpszText = wide.data();
    SendMessageW(tooltips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty()) SendMessageW(tooltips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

void FormWindow::syncSpokenNames() {
  for (auto& view : views_) {
    const std::string& name = view->control().spokenName();
    std::string& given = spokenNames_[view.get()];
    if (given == name) continue;
    for (const HWND window : {view->handle(), view->inner()}) {
      if (window != nullptr) SetSpokenName(window, name);
    }
    given = name;
  }
}

// The system keeps a name until it is taken back.
void FormWindow::dropSpokenNames() {
  for (auto& view : views_) {
    if (spokenNames_[view.get()].empty() || !IsWindow(view->handle())) continue;
    for (const HWND window : {view->handle(), view->inner()}) {
      if (window != nullptr) SetSpokenName(window, "");
    }
  }
}

int FormWindow::chooseFromMenu(const Control& below, const std::vector<MenuItem>& items) {
  const ControlView* view = viewOf(&below);
  if (view == nullptr) return 0;
  RECT area;
  GetWindowRect(view->handle(), &area);
  return menu_.choose(handle_, area, items);
}

}  // namespace pavoline
