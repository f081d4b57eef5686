#pragma once

#include <vector>

#include "session/session.h"

namespace pavoline {

// Enters an activity and leaves it for the one before. While it stands, the controls that must not
// change are locked; leaving unlocks those that it locked itself. Nothing leads out of a closed
// window.
class ActivityScope {
 public:
  ActivityScope() = default;  // of no activity
  ActivityScope(Session& session, Activity activity);
  ~ActivityScope() { leave(); }
  ActivityScope(ActivityScope&& other) noexcept;
  ActivityScope& operator=(ActivityScope&& other) noexcept;

  void leave();

 private:
  Session* session_ = nullptr;
  Activity before_ = Activity::kIdle;
  std::vector<Control*> locked_;
};

}  // namespace pavoline
