#include "win32/win_taskbar.h"

#include "win32/message_loop.h"

namespace pavoline {

bool WinTaskbar::create() {
  if (list_) return true;
  CLSID taskbarList;
  IID taskbarList3;
  if (FAILED(CLSIDFromString(L"{56FDF344-FD6D-11d0-958A-006097C9A090}", &taskbarList)) ||
      FAILED(IIDFromString(L"{EA1AFB91-9E28-4B86-90E9-9E9F8A5EEFAF}", &taskbarList3))) {
    return false;
  }
  void* created = nullptr;
  if (FAILED(
          CoCreateInstance(taskbarList, nullptr, CLSCTX_INPROC_SERVER, taskbarList3, &created))) {
    return false;
  }
  list_.reset(static_cast<ITaskbarList3*>(created));
  if (FAILED(list_->HrInit())) list_.reset();
  return list_ != nullptr;
}

void WinTaskbar::setProgressValue(int completed, int total) {
  if (list_ == nullptr) return;
  list_->SetProgressValue(loop_.mainWindow(), static_cast<ULONGLONG>(completed),
                          static_cast<ULONGLONG>(total));
}

void WinTaskbar::setProgressState(TaskbarState state) {
  if (list_ == nullptr) return;
  list_->SetProgressState(loop_.mainWindow(), static_cast<TBPFLAG>(state));
}

}  // namespace pavoline
