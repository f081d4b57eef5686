#pragma once

#include <windows.h>

#include <map>
#include <vector>

#include "form/form.h"
#include "win32/owned.h"

namespace pavoline {

// A form's entries above the standard ones of its window's system menu.
class SystemMenuView {
 public:
  // Brings the window's menu up to date. Where only check marks or greyed entries changed the menu
  // is kept, as it may be open.
  void show(HWND window, const std::vector<MenuItem>& items);

  // Gives the window's menu its pictures when it opens: drawing them would hold up the window.
  void opens(HWND window);

  // Lets the person choose from a menu of such entries below an area of the screen: the number of
  // the chosen one, 0 for none.
  int choose(HWND window, const RECT& below, const std::vector<MenuItem>& items);

 private:
  void showPictures(HMENU menu, const std::vector<MenuItem>& items);
  HBITMAP picture(int resource);

  std::vector<MenuItem> shown_;
  std::map<int, OwnedBitmap> pictures_;
};

}  // namespace pavoline
