#include "win32/system_menu_view.h"

#include <algorithm>

#include "win32/dpi.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

// Equal but for check marks.
bool SameEntries(const std::vector<MenuItem>& a, const std::vector<MenuItem>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const MenuItem& x, const MenuItem& y) {
                      return x.id == y.id && x.text == y.text && x.image == y.image &&
                             SameEntries(x.items, y.items);
                    });
}

void ShowCheckMarks(HMENU menu, const std::vector<MenuItem>& items) {
  for (const MenuItem& item : items) {
    ShowCheckMarks(menu, item.items);
    if (item.separator() || !item.items.empty()) continue;
    CheckMenuItem(menu, static_cast<UINT>(item.id),
                  MF_BYCOMMAND | static_cast<UINT>(item.checked ? MF_CHECKED : MF_UNCHECKED));
  }
}

// The icon as a bitmap whose transparent parts let the menu's ground through.
HBITMAP BitmapOfIcon(int resource, int size) {
  const auto icon =
      static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                    IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
  if (icon == nullptr) return nullptr;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size;
  info.bmiHeader.biHeight = -size;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  ReleaseDC(nullptr, screen);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap != nullptr) {
    // Drawn over zeros, colours come out multiplied by their opacity, which is what menus want.
    const HGDIOBJ old = SelectObject(memory, bitmap);
    DrawIconEx(memory, 0, 0, icon, size, size, 0, nullptr, DI_NORMAL);
    SelectObject(memory, old);
  }
  DeleteDC(memory);
  DestroyIcon(icon);
  return bitmap;
}

}  // namespace

SystemMenuView::~SystemMenuView() {
  for (const auto& [resource, bitmap] : pictures_) DeleteObject(bitmap);
}

void SystemMenuView::show(HWND window, const std::vector<MenuItem>& items, int dpi) {
  if (!SameEntries(items, shown_)) {
    if (!shown_.empty()) GetSystemMenu(window, TRUE);
    // Each entry goes in above the one before it.
    const HMENU menu = GetSystemMenu(window, FALSE);
    for (auto item = items.rbegin(); item != items.rend(); ++item) insert(menu, 0, *item, dpi);
  }
  shown_ = items;
  ShowCheckMarks(GetSystemMenu(window, FALSE), items);
}

void SystemMenuView::insert(HMENU menu, UINT position, const MenuItem& item, int dpi) {
  const std::wstring text = Wide(item.text);
  if (item.separator()) {
    InsertMenuW(menu, position, MF_BYPOSITION | MF_SEPARATOR, static_cast<UINT_PTR>(item.id),
                nullptr);
  } else if (item.items.empty()) {
    InsertMenuW(menu, position, MF_BYPOSITION | MF_STRING, static_cast<UINT_PTR>(item.id),
                text.c_str());
  } else {
    const HMENU popup = CreatePopupMenu();
    UINT place = 0;
    for (const MenuItem& inner : item.items) insert(popup, place++, inner, dpi);
    InsertMenuW(menu, position, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(popup),
                text.c_str());
  }
  if (item.image == 0) return;
  const HBITMAP bitmap = picture(item.image, dpi);
  SetMenuItemBitmaps(menu, position, MF_BYPOSITION, bitmap, bitmap);
}

HBITMAP SystemMenuView::picture(int resource, int dpi) {
  HBITMAP& bitmap = pictures_[resource];
  if (bitmap == nullptr) bitmap = BitmapOfIcon(resource, SmallIconSize(dpi));
  return bitmap;
}

}  // namespace pavoline
