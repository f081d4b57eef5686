#include "session/activity_scope.h"

#include <utility>

#include "form/control_status.h"

namespace pavoline {
namespace {

// The controls that an activity takes from the person.
std::vector<Control*> ControlsToLock(Form1& form, Activity activity) {
  switch (activity) {
    case Activity::kReadingSource:
      return {&form.combo1};
    case Activity::kChecking:
    case Activity::kRepairingBoot:
    case Activity::kPreparingDisk:
      return InputsOf(form);
    default:
      return {};  // an installation has ControlStatus, modal windows lock the main one themselves
  }
}

}  // namespace

ActivityScope::ActivityScope(Session& session, Activity activity)
    : session_(&session), before_(session.activity) {
  if (session.activity == Activity::kClosed) {
    session_ = nullptr;
    return;
  }
  session.activity = activity;
  for (Control* control : ControlsToLock(session.form, activity)) {
    if (!control->enabled()) continue;
    control->setEnabled(false);
    locked_.push_back(control);
  }
  if (session.activityChanged) session.activityChanged();
}

ActivityScope::ActivityScope(ActivityScope&& other) noexcept
    : session_(std::exchange(other.session_, nullptr)),
      before_(other.before_),
      locked_(std::move(other.locked_)) {}

ActivityScope& ActivityScope::operator=(ActivityScope&& other) noexcept {
  leave();
  session_ = std::exchange(other.session_, nullptr);
  before_ = other.before_;
  locked_ = std::move(other.locked_);
  return *this;
}

void ActivityScope::leave() {
  Session* session = std::exchange(session_, nullptr);
  if (session == nullptr || session->activity == Activity::kClosed) return;
  session->activity = before_;
  for (Control* control : locked_) control->setEnabled(true);
  locked_.clear();
  if (session->activityChanged) session->activityChanged();
}

}  // namespace pavoline
