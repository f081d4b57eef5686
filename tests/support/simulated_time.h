#pragma once

#include <functional>
#include <map>
#include <vector>

#include "form/form.h"

namespace pavoline::testing {

// The clock of a test, in milliseconds, which moves only when told to. Fires the timers of watched
// forms and queued actions in the order of their times, also from inside a handler (as messages
// reach a program that waits inside a handler).
class SimulatedTime {
 public:
  using Action = std::function<void()>;

  long now() const { return now_; }
  void after(long ms, Action action) { queue_.emplace(now_ + ms, std::move(action)); }
  void watch(Form& form) { forms_.push_back(&form); }
  void forget(Form& form);

  // The form watched first, the main window, has gone: waits should end.
  bool mainUnloaded() const { return !forms_.empty() && forms_.front()->unloaded(); }

  void pass(long ms) { now_ += ms; }  // nothing is noticed until events are handled
  // Fires all that is due within this span, or until the main window has gone.
  void advance(long ms, bool whileMainStays = false);
  // To the next thing that happens, but no further than that.
  void advanceToNext(long atMost = 3600 * 1000);
  bool anythingAhead() { return nextDue() >= 0; }  // a timer runs or an action is queued

 private:
  struct TimerState {
    unsigned revision = 0;
    long due = -1;  // -1: does not run
  };
  void noticeTimers();
  long nextDue();
  void fireOneDueBy(long time);
  void holdToADay() const;  // throws after a day: something waits for ever

  long now_ = 0;
  std::vector<Form*> forms_;
  std::map<Timer*, TimerState> timers_;
  std::multimap<long, Action> queue_;
};

}  // namespace pavoline::testing
