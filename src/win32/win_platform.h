#pragma once

#include "platform/platform.h"
#include "win32/message_loop.h"
#include "win32/win_dialogs.h"
#include "win32/win_drives.h"
#include "win32/win_environment.h"
#include "win32/win_files.h"
#include "win32/win_foreign_windows.h"
#include "win32/win_processes.h"
#include "win32/win_profile.h"
#include "win32/win_taskbar.h"
#include "win32/win_text_services.h"

namespace pavoline {

// Windows as the program sees it: every adapter, and the message loop they share.
class WinPlatform {
 public:
  // Prepares the process: error boxes of the system off, DLLs from the system folder only,
  // common controls and the component library ready.
  WinPlatform();
  ~WinPlatform();
  WinPlatform(const WinPlatform&) = delete;
  WinPlatform& operator=(const WinPlatform&) = delete;

  Platform& platform() { return platform_; }
  MessageLoop& loop() { return loop_; }

 private:
  struct Components {
    Components();
    ~Components();
  };

  Components components_;
  MessageLoop loop_;
  WinProcesses processes_{loop_};
  WinFiles files_;
  WinDrives drives_;
  WinProfile profile_;
  WinEnvironment environment_;
  WinTextServices text_;
  WinForeignWindows windows_;
  WinTaskbar taskbar_{loop_};
  WinDialogs dialogs_{loop_};
  Platform platform_{processes_, files_,   drives_,  profile_, environment_,
                     text_,      windows_, taskbar_, dialogs_};
};

}  // namespace pavoline
