#include "win32/control_view.h"

#include "win32/dpi.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

LRESULT CALLBACK TypingFilter(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                              DWORD_PTR data) {
  const auto& accepts = *reinterpret_cast<const KeyFilter*>(data);
  constexpr WPARAM kFirstPrintable = 32;
  if (message == WM_CHAR && wParam >= kFirstPrintable && accepts &&
      !accepts(static_cast<char32_t>(wParam))) {
    return 0;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void ControlView::sync(const ViewStyle& style) {
  style_ = style;
  if (shownRevision_ == control_.revision()) return;
  shownRevision_ = control_.revision();
  if (!(shownBounds_ == control_.bounds())) {
    shownBounds_ = control_.bounds();
    const RECT area = {InPixels(shownBounds_.left, style.dpi),
                       InPixels(shownBounds_.top, style.dpi),
                       InPixels(shownBounds_.left + shownBounds_.width, style.dpi),
                       InPixels(shownBounds_.top + shownBounds_.height, style.dpi)};
    place(area);
  }
  show();
  if ((IsWindowEnabled(handle_) != 0) != control_.enabled()) {
    EnableWindow(handle_, control_.enabled());
  }
  const bool visible = (GetWindowLongPtrW(handle_, GWL_STYLE) & WS_VISIBLE) != 0;
  if (visible != control_.visible()) ShowWindow(handle_, control_.visible() ? SW_SHOWNA : SW_HIDE);
}

void ControlView::restyle(const ViewStyle& style) {
  style_ = style;
  SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(style.font), TRUE);
  onStyle();
  shownBounds_ = Rect{-1, -1, -1, -1};
  shownRevision_ = ~control_.revision();
  sync(style);
}

void ControlView::place(const RECT& area) {
  SetWindowPos(handle_, nullptr, area.left, area.top, area.right - area.left,
               area.bottom - area.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND CreateControl(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, HWND parent,
                   int id) {
  return CreateWindowExW(extendedStyle, windowClass, L"", WS_CHILD | style, 0, 0, 0, 0, parent,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                         GetModuleHandleW(nullptr), nullptr);
}

std::string WindowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return Narrow(text);
}

void ShowText(HWND window, const std::string& text) {
  if (WindowText(window) != text) SetWindowTextW(window, Wide(text).c_str());
}

void FilterTyping(HWND edit, const KeyFilter& filter) {
  SetWindowSubclass(edit, TypingFilter, 1, reinterpret_cast<DWORD_PTR>(&filter));
}

}  // namespace pavoline
