#include "win32/dpi.h"

#include "win32/owned.h"
#include "win32/system_library.h"

namespace pavoline {

int ScreenDpi() {
  const ScreenContext screen;
  return GetDeviceCaps(screen.get(), LOGPIXELSX);
}

int DpiOfWindow(HWND window) {
  using GetDpi = UINT WINAPI(HWND);
  static const auto getDpi = SystemFunction<GetDpi>(L"user32.dll", "GetDpiForWindow");
  const UINT dpi = getDpi != nullptr ? getDpi(window) : 0;
  return dpi != 0 ? static_cast<int>(dpi) : ScreenDpi();
}

SIZE FrameSize(DWORD style, DWORD extendedStyle, int dpi) {
  using Adjust = BOOL WINAPI(RECT*, DWORD, BOOL, DWORD, UINT);
  static const auto adjust = SystemFunction<Adjust>(L"user32.dll", "AdjustWindowRectExForDpi");
  RECT rect{};
  if (adjust == nullptr || !adjust(&rect, style, FALSE, extendedStyle, static_cast<UINT>(dpi))) {
    AdjustWindowRectEx(&rect, style, FALSE, extendedStyle);
  }
  return {rect.right - rect.left, rect.bottom - rect.top};
}

LOGFONTW MessageFont(int dpi) {
  using Parameters = BOOL WINAPI(UINT, UINT, void*, UINT, UINT);
  static const auto parameters =
      SystemFunction<Parameters>(L"user32.dll", "SystemParametersInfoForDpi");
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (parameters == nullptr ||
      !parameters(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi))) {
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, ScreenDpi());
  }
  return metrics.lfMessageFont;
}

int SmallIconSize(int dpi) { return MulDiv(16, dpi, 96); }

}  // namespace pavoline
