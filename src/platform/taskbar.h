#pragma once

namespace pavoline {

// States of the progress shown on the taskbar button; the values are the platform's.
enum class TaskbarState { kNone = 0, kIndeterminate = 1 };

// The main window's taskbar button. Until `create` has succeeded the other calls do nothing.
class Taskbar {
 public:
  virtual ~Taskbar() = default;

  virtual bool create() = 0;
  virtual void setProgressValue(int completed, int total) = 0;
  virtual void setProgressState(TaskbarState state) = 0;
};

}  // namespace pavoline
