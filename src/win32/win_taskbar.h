#pragma once

#include <windows.h>
// After windows.h, on which it leans.
#include <shobjidl.h>

#include "platform/taskbar.h"
#include "win32/owned.h"

namespace pavoline {

class MessageLoop;

class WinTaskbar : public Taskbar {
 public:
  explicit WinTaskbar(const MessageLoop& loop) : loop_(loop) {}

  bool create() override;
  void setProgressValue(int completed, int total) override;
  void setProgressState(TaskbarState state) override;

 private:
  const MessageLoop& loop_;
  ComObject<ITaskbarList3> list_;
};

}  // namespace pavoline
