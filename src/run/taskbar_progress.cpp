#include "run/taskbar_progress.h"

#include "platform/taskbar.h"

namespace pavoline {
namespace {

constexpr float kFirstVersionWithTaskbarProgress = 6.1f;

}  // namespace

void CreateTaskbarProgress(Session& session) {
  if (session.osVersion >= kFirstVersionWithTaskbarProgress) session.platform.taskbar.create();
}

void CallW7TaskProgress(Session& session) {
  session.platform.taskbar.setProgressValue(session.form.progressBar1.value(), 100);
}

}  // namespace pavoline
