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

void Insert(HMENU menu, UINT position, const MenuItem& item) {
  const std::wstring text = Wide(item.text);
  if (item.separator()) {
    InsertMenuW(menu, position, MF_BYPOSITION | MF_SEPARATOR, static_cast<UINT_PTR>(item.id),
                nullptr);
  } else if (item.items.empty()) {
    InsertMenuW(menu, position, MF_BYPOSITION | MF_STRING, static_cast<UINT_PTR>(item.id),
                text.c_str());
  } else {
    OwnedMenu popup(CreatePopupMenu());
    UINT place = 0;
    for (const MenuItem& inner : item.items) Insert(popup.get(), place++, inner);
    // From then on the menu's own.
    if (InsertMenuW(menu, position, MF_BYPOSITION | MF_POPUP,
                    reinterpret_cast<UINT_PTR>(popup.get()), text.c_str())) {
      popup.release();
    }
  }
}

// The icon on the menu's ground, as not every system blends a bitmap beside a menu text, and in
// the size of a check mark, as not every system shows more. Shrunk from twice the size, which
// looks better than a small icon made smaller.
OwnedBitmap BitmapOfIcon(int resource) {
  const int width = GetSystemMetrics(SM_CXMENUCHECK), height = GetSystemMetrics(SM_CYMENUCHECK);
  const OwnedIcon icon(static_cast<HICON>(LoadImageW(
      GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), IMAGE_ICON, 32, 32, LR_DEFAULTCOLOR)));
  if (!icon) return nullptr;
  const ScreenContext screen;
  const OwnedBitmap drawn(CreateCompatibleBitmap(screen.get(), 32, 32));
  OwnedBitmap shrunk(CreateCompatibleBitmap(screen.get(), width, height));
  {
    // Gone before the bitmaps: what a context has selected is not deleted.
    const MemoryContext large(CreateCompatibleDC(screen.get()));
    const MemoryContext small(CreateCompatibleDC(screen.get()));
    SelectObject(large.get(), drawn.get());
    SelectObject(small.get(), shrunk.get());
    DrawIconEx(large.get(), 0, 0, icon.get(), 32, 32, 0, GetSysColorBrush(COLOR_MENU), DI_NORMAL);
    SetStretchBltMode(small.get(), HALFTONE);
    StretchBlt(small.get(), 0, 0, width, height, large.get(), 0, 0, 32, 32, SRCCOPY);
  }
  return shrunk;
}

}  // namespace

void SystemMenuView::show(HWND window, const std::vector<MenuItem>& items) {
  if (!SameEntries(items, shown_)) {
    if (!shown_.empty()) GetSystemMenu(window, TRUE);
    // Each entry goes in above the one before it.
    const HMENU menu = GetSystemMenu(window, FALSE);
    for (auto item = items.rbegin(); item != items.rend(); ++item) Insert(menu, 0, *item);
  }
  shown_ = items;
  ShowStates(GetSystemMenu(window, FALSE), items);
}

void SystemMenuView::opens(HWND window) { showPictures(GetSystemMenu(window, FALSE), shown_); }

int SystemMenuView::choose(HWND window, const RECT& below, const std::vector<MenuItem>& items) {
  const OwnedMenu menu(CreatePopupMenu());
  UINT place = 0;
  for (const MenuItem& item : items) Insert(menu.get(), place++, item);
  ShowStates(menu.get(), items);
  showPictures(menu.get(), items);
  TPMPARAMS beside{};
  beside.cbSize = sizeof beside;
  beside.rcExclude = below;
  return TrackPopupMenuEx(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN | TPM_VERTICAL,
                          static_cast<int>(below.left), static_cast<int>(below.bottom), window,
                          &beside);
}

void SystemMenuView::showPictures(HMENU menu, const std::vector<MenuItem>& items) {
  for (UINT place = 0; place < items.size(); ++place) {
    const MenuItem& item = items[place];
    if (!item.items.empty()) showPictures(GetSubMenu(menu, static_cast<int>(place)), item.items);
    if (item.image == 0) continue;
    const HBITMAP bitmap = picture(item.image);
    SetMenuItemBitmaps(menu, place, MF_BYPOSITION, bitmap, bitmap);
  }
}

HBITMAP SystemMenuView::picture(int resource) {
  OwnedBitmap& bitmap = pictures_[resource];
  if (!bitmap) bitmap = BitmapOfIcon(resource);
  return bitmap.get();
}

}  // namespace pavoline
