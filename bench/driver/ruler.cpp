#include "driver/ruler.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <commctrl.h>

#include <map>

#include "bridge/unix_side.h"
#include "win32/dpi.h"

namespace bench {
namespace {

// A control's font, or another, to measure with.
class Ruler {
 public:
  explicit Ruler(HFONT font) : screen_(GetDC(nullptr)), before_(SelectObject(screen_, font)) {}
  Ruler(const Ruler&) = delete;
  Ruler& operator=(const Ruler&) = delete;
  ~Ruler() {
    SelectObject(screen_, before_);
    ReleaseDC(nullptr, screen_);
  }

  // Room that a text needs when its lines are broken at a width.
  SIZE of(const std::wstring& text, int width, UINT format = 0) const {
    RECT area{0, 0, width, 0};
    DrawTextW(screen_, text.c_str(), -1, &area, DT_CALCRECT | DT_WORDBREAK | format);
    return {area.right, area.bottom};
  }
  int widthOf(const std::wstring& text, UINT format = 0) const {
    RECT area{};
    DrawTextW(screen_, text.c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE | format);
    return static_cast<int>(area.right);
  }

 private:
  HDC screen_;
  HGDIOBJ before_;
};

// The resolution that a control is laid out in, told by its font: lower than the screen's where the
// window would not fit.
int DrawnDpi(HWND window) {
  const int dpi = pavoline::DpiOfWindow(window);
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)), sizeof font, &font);
  const LONG whole = pavoline::MessageFont(dpi).lfHeight;
  return font.lfHeight == 0 || whole == 0 ? dpi : MulDiv(dpi, font.lfHeight, whole);
}

struct Control {
  Window window;
  std::string className;
  LONG_PTR style;
  RECT inside;  // client area
  int dpi, screenDpi;

  explicit Control(const Window& of)
      : window(of),
        className(of.className()),
        style(GetWindowLongPtrW(of.handle(), GWL_STYLE)),
        dpi(DrawnDpi(of.handle())),
        screenDpi(pavoline::DpiOfWindow(of.handle())) {
    GetClientRect(of.handle(), &inside);
  }
  HFONT font() const {
    return reinterpret_cast<HFONT>(SendMessageW(window.handle(), WM_GETFONT, 0, 0));
  }
  int pixels(int at96) const { return MulDiv(at96, dpi, 96); }
  int type() const { return static_cast<int>(style & BS_TYPEMASK); }
};

std::string Fault(const Control& control, const std::string& text, int needed, int there) {
  return control.className + " #" + std::to_string(control.window.id()) + " \"" + text +
         "\": " + std::to_string(needed) + " pixels of text in " + std::to_string(there) + "\n";
}

std::string TooWide(const Control& control, const std::string& text, int beside, UINT format = 0) {
  const int needed = Ruler(control.font()).widthOf(FromUtf8(text), format);
  const int there = static_cast<int>(control.inside.right) - beside;
  return needed > there ? Fault(control, text, needed, there) : "";
}

std::string LabelFault(const Control& control, const std::string& text) {
  const SIZE needed = Ruler(control.font()).of(FromUtf8(text), control.inside.right);
  if (needed.cy > control.inside.bottom) {
    return Fault(control, text, static_cast<int>(needed.cy), control.inside.bottom);
  }
  return needed.cx > control.inside.right
             ? Fault(control, text, static_cast<int>(needed.cx), control.inside.right)
             : "";
}

// What a button draws beside its text: the edges, or the mark, which has the screen's resolution,
// and a gap.
int BesideText(const Control& button) {
  switch (button.type()) {
    case BS_GROUPBOX:
      return button.pixels(18);
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
      return button.pixels(10);
    default:
      return MulDiv(18, button.screenDpi, 96);
  }
}

std::string ButtonFault(const Control& control, const std::string& text) {
  return TooWide(control, text, BesideText(control));
}

std::string LinkFault(const Control& control, const std::string& marked) {
  std::string text = marked;
  for (const std::string tag : {"<a>", "</a>"}) {
    if (const auto at = text.find(tag); at != std::string::npos) text.erase(at, tag.size());
  }
  return TooWide(control, text, 0, DT_NOPREFIX);
}

// A list that only offers its entries must show each; a field holds whatever was typed.
std::string ComboFault(const Control& control, const std::string&) {
  if ((control.style & 3) != CBS_DROPDOWNLIST) return "";
  std::string faults;
  const int beside = GetSystemMetrics(SM_CXVSCROLL) + control.pixels(8);
  for (const std::string& item : control.window.items()) {
    faults += TooWide(control, item, beside, DT_NOPREFIX);
  }
  return faults;
}

std::string ListFault(const Control& control, const std::string&) {
  const HWND list = control.window.handle();
  const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  const auto columns = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
  std::string faults;
  int sum = 0;
  for (int i = 0; i < columns; ++i) {
    wchar_t title[256] = L"";
    HDITEMW item{};
    item.mask = HDI_TEXT | HDI_WIDTH;
    item.pszText = title;
    item.cchTextMax = 256;
    SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    const int needed = Ruler(control.font()).widthOf(title, DT_NOPREFIX) + control.pixels(12);
    if (needed > item.cxy) faults += Fault(control, ToUtf8(title), needed, item.cxy);
    sum += item.cxy;
  }
  if (sum > control.inside.right) faults += Fault(control, "columns", sum, control.inside.right);
  return faults;
}

using Measure = std::string (*)(const Control& control, const std::string& text);

const std::map<std::string, Measure>& Measures() {
  static const std::map<std::string, Measure> table = {
      {"Static", LabelFault},   {"Button", ButtonFault},      {"SysLink", LinkFault},
      {"ComboBox", ComboFault}, {"SysListView32", ListFault},
  };
  return table;
}

std::string TitleFault(const Window& window) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
  const HFONT font = CreateFontIndirectW(&metrics.lfCaptionFont);
  const int needed = Ruler(font).widthOf(FromUtf8(window.text()), DT_NOPREFIX);
  DeleteObject(font);
  const Control frame(window);
  const int buttons = (frame.style & WS_MINIMIZEBOX) ? 3 : 1;
  const int there =
      frame.inside.right - (buttons + 1) * (GetSystemMetrics(SM_CXSIZE) + frame.pixels(2));
  return needed > there ? Fault(frame, window.text(), needed, there) : "";
}

}  // namespace

std::string CutText(const Window& window, const std::string& text) {
  const Control control(window);
  const auto measure = Measures().find(control.className);
  return measure == Measures().end() ? "" : measure->second(control, text);
}

std::string CutTexts(const Window& window) {
  std::string faults = TitleFault(window);
  for (const Window& child : window.children()) {
    if (child.visible()) faults += CutText(child, child.text());
  }
  return faults;
}

}  // namespace bench
