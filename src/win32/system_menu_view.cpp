#include "win32/system_menu_view.h"

#include <algorithm>

#include "win32/wide_text.h"

namespace pavoline {
namespace {

// Equal but for what marks and greys them.
bool SameEntries(const std::vector<MenuItem>& a, const std::vector<MenuItem>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const MenuItem& x, const MenuItem& y) {
                      return x.id == y.id && x.text == y.text && x.image == y.image &&
                             SameEntries(x.items, y.items);
                    });
}

// The entries stand in the menu in their order, above the system's.
void ShowStates(HMENU menu, const std::vector<MenuItem>& items) {
  for (UINT place = 0; place < items.size(); ++place) {
    const MenuItem& item = items[place];
    if (item.separator()) continue;
    const auto state = static_cast<UINT>(item.enabled ? MF_ENABLED : MF_GRAYED);
    EnableMenuItem(menu, place, MF_BYPOSITION | state);
    if (item.items.empty()) {
      const auto mark = static_cast<UINT>(item.checked ? MF_CHECKED : MF_UNCHECKED);
      CheckMenuItem(menu, place, MF_BYPOSITION | mark);
    } else {
      ShowStates(GetSubMenu(menu, static_cast<int>(place)), item.items);
    }
  }
}

// The icon on the menu's ground, as not every system blends a bitmap beside a menu text, and in
// the size of a check mark, as not every system shows more. Shrunk from twice the size, which
// looks better than a small icon made smaller.
HBITMAP BitmapOfIcon(int resource) {
  const int width = GetSystemMetrics(SM_CXMENUCHECK), height = GetSystemMetrics(SM_CYMENUCHECK);
  const auto icon = static_cast<HICON>(LoadImageW(
      GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), IMAGE_ICON, 32, 32, LR_DEFAULTCOLOR));
  if (icon == nullptr) return nullptr;
  const HDC screen = GetDC(nullptr);
  const HDC large = CreateCompatibleDC(screen), small = CreateCompatibleDC(screen);
  const HBITMAP drawn = CreateCompatibleBitmap(screen, 32, 32);
  const HBITMAP shrunk = CreateCompatibleBitmap(screen, width, height);
  ReleaseDC(nullptr, screen);
  const HGDIOBJ oldLarge = SelectObject(large, drawn), oldSmall = SelectObject(small, shrunk);
  DrawIconEx(large, 0, 0, icon, 32, 32, 0, GetSysColorBrush(COLOR_MENU), DI_NORMAL);
  SetStretchBltMode(small, HALFTONE);
  StretchBlt(small, 0, 0, width, height, large, 0, 0, 32, 32, SRCCOPY);
  SelectObject(large, oldLarge);
  SelectObject(small, oldSmall);
  DeleteDC(large);
  DeleteDC(small);
  DeleteObject(drawn);
  DestroyIcon(icon);
  return shrunk;
}

}  // namespace

SystemMenuView::~SystemMenuView() {
  for (const auto& [resource, bitmap] : pictures_) DeleteObject(bitmap);
}

void SystemMenuView::show(HWND window, const std::vector<MenuItem>& items) {
  if (!SameEntries(items, shown_)) {
    if (!shown_.empty()) GetSystemMenu(window, TRUE);
    // Each entry goes in above the one before it.
    const HMENU menu = GetSystemMenu(window, FALSE);
    for (auto item = items.rbegin(); item != items.rend(); ++item) insert(menu, 0, *item);
  }
  shown_ = items;
  ShowStates(GetSystemMenu(window, FALSE), items);
}

int SystemMenuView::choose(HWND window, const RECT& below, const std::vector<MenuItem>& items) {
  const HMENU menu = CreatePopupMenu();
  UINT place = 0;
  for (const MenuItem& item : items) insert(menu, place++, item);
  ShowStates(menu, items);
  TPMPARAMS beside{};
  beside.cbSize = sizeof beside;
  beside.rcExclude = below;
  const int chosen = TrackPopupMenuEx(
      menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN | TPM_VERTICAL,
      static_cast<int>(below.left), static_cast<int>(below.bottom), window, &beside);
  DestroyMenu(menu);
  return chosen;
}

void SystemMenuView::insert(HMENU menu, UINT position, const MenuItem& item) {
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
    for (const MenuItem& inner : item.items) insert(popup, place++, inner);
    InsertMenuW(menu, position, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(popup),
                text.c_str());
  }
  if (item.image == 0) return;
  const HBITMAP bitmap = picture(item.image);
  SetMenuItemBitmaps(menu, position, MF_BYPOSITION, bitmap, bitmap);
}

HBITMAP SystemMenuView::picture(int resource) {
  HBITMAP& bitmap = pictures_[resource];
  if (bitmap == nullptr) bitmap = BitmapOfIcon(resource);
  return bitmap;
}

}  // namespace pavoline
