#include "win32/form_window.h"

#include <shellapi.h>

#include <algorithm>
#include <optional>

#include "form/pixels.h"
#include "resource_ids.h"
#include "win32/dpi.h"
#include "win32/message_loop.h"
#include "win32/system_library.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// IDC_ARROW in its wide form.
const LPCWSTR kArrowCursor = MAKEINTRESOURCEW(32512);

constexpr DWORD kMainStyle = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr DWORD kModalStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr DWORD kMainExtendedStyle = WS_EX_APPWINDOW | WS_EX_CONTROLPARENT;
constexpr DWORD kModalExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

HICON ProgramIcon(int size) {
  return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr),
                                       MAKEINTRESOURCEW(PAVOLINE_ICON_MAIN), IMAGE_ICON, size, size,
                                       LR_DEFAULTCOLOR | LR_SHARED));
}

RECT WorkAreaOf(HWND window) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
  return info.rcWork;
}

// Files may be dropped from programs with fewer rights than this one, which the system forbids
// by default.
void AcceptDrops(HWND window) {
  DragAcceptFiles(window, TRUE);
  using Allow = BOOL WINAPI(HWND, UINT, DWORD, void*);
  constexpr UINT kCopyGlobalData = 0x0049;
  constexpr DWORD kAllow = 1;
  if (auto* allow = SystemFunction<Allow>(L"user32.dll", "ChangeWindowMessageFilterEx")) {
    for (const UINT message :
         {static_cast<UINT>(WM_DROPFILES), static_cast<UINT>(WM_COPYDATA), kCopyGlobalData}) {
      allow(window, message, kAllow, nullptr);
    }
  }
}

}  // namespace

FormWindow::FormWindow(Form& form, MessageLoop& loop, HWND owner)
    : form_(form), loop_(loop), owner_(owner) {
  create();
  loop_.add(*this);
  sync();
}

FormWindow::~FormWindow() {
  loop_.remove(*this);
  dropSpokenNames();
  if (handle_ != nullptr) DestroyWindow(handle_);
}

void FormWindow::create() {
  const std::wstring className = L"Pavoline." + Wide(form_.name());
  WNDCLASSEXW windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = windowProcedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursorW(nullptr, kArrowCursor);
  windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1));
  windowClass.lpszClassName = className.c_str();
  RegisterClassExW(&windowClass);  // fails harmlessly for a form that was shown before

  // WS_CLIPCHILDREN: the ground is not painted where controls paint over it, so nothing flickers.
  CreateWindowExW(isMain() ? kMainExtendedStyle : kModalExtendedStyle, className.c_str(), L"",
                  (isMain() ? kMainStyle : kModalStyle) | WS_CLIPCHILDREN, 0, 0, 0, 0, owner_,
                  nullptr, GetModuleHandleW(nullptr), this);
  dpi_ = DpiOfWindow(handle_);
  style_.dpi = fittingDpi();
  if (isMain()) {
    SendMessageW(handle_, WM_SETICON, ICON_BIG,
                 reinterpret_cast<LPARAM>(ProgramIcon(2 * SmallIconSize(dpi_))));
    SendMessageW(handle_, WM_SETICON, ICON_SMALL,
                 reinterpret_cast<LPARAM>(ProgramIcon(SmallIconSize(dpi_))));
  }

  tooltips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, handle_, nullptr,
                              GetModuleHandleW(nullptr), nullptr);
  constexpr LPARAM kTooltipTwips = 6000;  // longer texts are broken into lines
  SendMessageW(tooltips_, TTM_SETMAXTIPWIDTH, 0, InPixels(kTooltipTwips, style_.dpi));

  int id = kFirstControlId;
  std::optional<Control::Kind> before;
  for (Control* control : form_.controls()) {
    views_.push_back(MakeControlView(*control, handle_, id++));
    // Arrow keys go round within neighbouring option buttons.
    const bool option = control->kind() == Control::Kind::kOptionButton;
    if (!option || before != Control::Kind::kOptionButton) {
      const HWND window = views_.back()->handle();
      SetWindowLongPtrW(window, GWL_STYLE, GetWindowLongPtrW(window, GWL_STYLE) | WS_GROUP);
    }
    before = control->kind();
  }
  shownTimers_.assign(form_.timers().size(), ~0u);
}

void FormWindow::show() {
  RECT outer;
  GetWindowRect(handle_, &outer);
  const RECT area = WorkAreaOf(owner_ != nullptr ? owner_ : handle_);
  RECT about = area;
  if (owner_ != nullptr && IsWindowVisible(owner_)) GetWindowRect(owner_, &about);
  const LONG width = outer.right - outer.left, height = outer.bottom - outer.top;
  const LONG left = (about.left + about.right - width) / 2;
  const LONG top = (about.top + about.bottom - height) / 2;
  SetWindowPos(handle_, nullptr, std::max(area.left, std::min(left, area.right - width)),
               std::max(area.top, std::min(top, area.bottom - height)), 0, 0,
               SWP_NOSIZE | SWP_NOZORDER);
  shown_ = true;
  ShowWindow(handle_, SW_SHOWNORMAL);
  UpdateWindow(handle_);
  keepFocusAlive();
}

void FormWindow::sync() {
  if (handle_ == nullptr || syncing_) return;
  if (isMain() && form_.unloaded()) {
    DestroyWindow(handle_);
    return;
  }
  struct Mark {
    bool& syncing;
    ~Mark() { syncing = false; }
  } mark{syncing_ = true};
  if (shownRevision_ != form_.revision()) syncForm();
  for (auto& view : views_) view->sync(style_);
  syncDefaultButton();
  syncTooltips();
  syncSpokenNames();
  syncTimers();
  syncFocus();
}

void FormWindow::syncForm() {
  shownRevision_ = form_.revision();
  ShowText(handle_, form_.caption());
  menu_.show(handle_, form_.systemMenu());
  if (style_.font == nullptr || shownFont_ != form_.font() || style_.dpi != fittingDpi()) {
    refreshStyle();
  } else {
    resize();
  }
  if (form_.onDropFiles) AcceptDrops(handle_);
}

void FormWindow::refreshStyle() {
  style_.dpi = fittingDpi();
  LOGFONTW wanted = MessageFont(style_.dpi);
  const std::wstring face = Wide(form_.font());
  if (!face.empty() && face.size() < LF_FACESIZE) {
    std::copy_n(face.c_str(), face.size() + 1, wanted.lfFaceName);
    wanted.lfCharSet = DEFAULT_CHARSET;
  }
  OwnedFont font(CreateFontIndirectW(&wanted));
  style_.font = font.get();
  shownFont_ = form_.font();
  for (auto& view : views_) view->restyle(style_);
  SendMessageW(tooltips_, WM_SETFONT, reinterpret_cast<WPARAM>(style_.font), TRUE);
  font_ = std::move(font);
  resize();
  // Everything has moved, and a combo box may change its height without clearing what it leaves.
  RedrawWindow(handle_, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

SIZE FormWindow::frameSize() const {
  return FrameSize(isMain() ? kMainStyle : kModalStyle,
                   isMain() ? kMainExtendedStyle : kModalExtendedStyle, dpi_);
}

// A window that is larger than its screen could not be used: it is drawn smaller instead.
int FormWindow::fittingDpi() const {
  const RECT area = WorkAreaOf(owner_ != nullptr ? owner_ : handle_);
  const int wide = FittingDpi(dpi_, form_.width(), static_cast<int>(area.right - area.left));
  return FittingDpi(wide, form_.height(),
                    static_cast<int>(area.bottom - area.top - frameSize().cy));
}

SIZE FormWindow::outerSize() const {
  const SIZE frame = frameSize();
  return {InPixels(form_.width(), style_.dpi), InPixels(form_.height(), style_.dpi) + frame.cy};
}

void FormWindow::resize() {
  RECT now;
  GetWindowRect(handle_, &now);
  const SIZE wanted = outerSize();
  if (now.right - now.left == wanted.cx && now.bottom - now.top == wanted.cy) return;
  LONG left = now.left, top = now.top;
  if (shown_) {
    const RECT area = WorkAreaOf(handle_);
    left = std::max(area.left, std::min(left, area.right - wanted.cx));
    top = std::max(area.top, std::min(top, area.bottom - wanted.cy));
  }
  SetWindowPos(handle_, nullptr, left, top, wanted.cx, wanted.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::syncDefaultButton() {
  if (shownDefault_ == form_.defaultButton) return;
  const auto mark = [this](const Button* button, WPARAM style) {
    if (const ControlView* view = viewOf(button)) {
      SendMessageW(view->handle(), BM_SETSTYLE, style, TRUE);
    }
  };
  mark(shownDefault_, BS_PUSHBUTTON);
  mark(form_.defaultButton, BS_DEFPUSHBUTTON);
  shownDefault_ = form_.defaultButton;
}

void FormWindow::syncTimers() {
  for (std::size_t i = 0; i < shownTimers_.size(); ++i) {
    const Timer& timer = *form_.timers()[i];
    if (shownTimers_[i] == timer.revision()) continue;
    shownTimers_[i] = timer.revision();
    const UINT_PTR number = i + 1;
    if (timer.enabled() && timer.interval() > 0) {
      SetTimer(handle_, number, static_cast<UINT>(timer.interval()), nullptr);
    } else {
      KillTimer(handle_, number);
    }
  }
}

void FormWindow::syncFocus() {
  if (seenFocusRequests_ != form_.focusRequests()) {
    seenFocusRequests_ = form_.focusRequests();
    if (ControlView* view = viewOf(form_.focused())) {
      lastFocus_ = view->handle();
      refuge_ = nullptr;
      if (GetActiveWindow() == handle_) SetFocus(lastFocus_);
    }
  }
  if (shown_ && GetActiveWindow() == handle_) keepFocusAlive();
}

// A control that is disabled or hidden while it has the keyboard would leave the window deaf. The
// keyboard goes to the next one and comes back with the control, unless the user moved on.
void FormWindow::keepFocusAlive() {
  const HWND focus = GetFocus();
  const auto alive = [](HWND window) {
    return window != nullptr && IsWindowEnabled(window) && IsWindowVisible(window);
  };
  const bool usable = focus != handle_ && alive(focus) && IsChild(handle_, focus);
  if (usable && focus != refuge_) {
    lastFocus_ = focus;
    refuge_ = nullptr;
    return;
  }
  if (usable && !alive(lastFocus_)) return;
  HWND wanted = lastFocus_;
  if (alive(wanted)) {
    refuge_ = nullptr;
  } else {
    wanted = GetNextDlgTabItem(handle_, nullptr, FALSE);
    if (!alive(wanted)) wanted = handle_;
    refuge_ = innermost(wanted);
  }
  if (wanted != focus) SetFocus(wanted);
}

// The window that really gets the keyboard when this one is asked to take it.
HWND FormWindow::innermost(HWND window) {
  const ControlView* view = viewOf(window);
  return view != nullptr && view->inner() != nullptr ? view->inner() : window;
}

ControlView* FormWindow::viewOf(HWND control) {
  const auto found = std::find_if(views_.begin(), views_.end(), [control](const auto& view) {
    return view->handle() == control;
  });
  return found == views_.end() ? nullptr : found->get();
}

ControlView* FormWindow::viewOf(const Control* control) {
  const auto found = std::find_if(views_.begin(), views_.end(), [control](const auto& view) {
    return &view->control() == control;
  });
  return found == views_.end() ? nullptr : found->get();
}

}  // namespace pavoline
