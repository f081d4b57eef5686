#include "win32/win_platform.h"

#include <windows.h>
// After windows.h, on which they lean.
#include <commctrl.h>
#include <objbase.h>
#include <ole2.h>

#include "win32/system_library.h"

namespace pavoline {

WinPlatform::Components::Components() {
  RestrictLibrarySearch();
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES |
                                                     ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS |
                                                     ICC_LINK_CLASS};
  InitCommonControlsEx(&controls);
  OleInitialize(nullptr);
}

WinPlatform::Components::~Components() { OleUninitialize(); }

WinPlatform::WinPlatform() = default;
WinPlatform::~WinPlatform() = default;

}  // namespace pavoline
