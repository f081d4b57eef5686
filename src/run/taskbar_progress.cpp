#include "run/taskbar_progress.h"

#include "platform/taskbar.h"

namespace pavoline {
namespace {

constexpr float kFirstVersionWithTaskbarProgress = 6.1f;

}  // namespace

void CreateTaskbarProgress(Ground& ground) {
  if (ground.osVersion >= kFirstVersionWithTaskbarProgress) ground.platform.taskbar.create();
}

void CallW7TaskProgress(Workplace& workplace) {
  workplace.platform.taskbar.setProgressValue(workplace.form.progressBar1.value(), 100);
}

}  // namespace pavoline
