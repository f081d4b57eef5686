#include "support/simulated_time.h"

#include <algorithm>
#include <stdexcept>

namespace pavoline::testing {

void SimulatedTime::forget(Form& form) {
  std::erase(forms_, &form);
  for (Timer* timer : form.timers()) timers_.erase(timer);
}

// A timer that was switched or whose interval was set starts its interval anew.
void SimulatedTime::noticeTimers() {
  for (Form* form : forms_) {
    for (Timer* timer : form->timers()) {
      const bool runs = timer->enabled() && timer->interval() > 0 && !form->unloaded();
      auto [it, isNew] = timers_.try_emplace(timer);
      TimerState& state = it->second;
      if (!isNew && state.revision == timer->revision() && runs == (state.due >= 0)) continue;
      state.revision = timer->revision();
      state.due = runs ? now_ + timer->interval() : -1;
    }
  }
}

long SimulatedTime::nextDue() {
  noticeTimers();
  long due = queue_.empty() ? -1 : queue_.begin()->first;
  for (const auto& [timer, state] : timers_) {
    if (state.due >= 0 && (due < 0 || state.due < due)) due = state.due;
  }
  return due;
}

void SimulatedTime::holdToADay() const {
  constexpr long kOneDay = 24L * 3600 * 1000;
  if (now_ > kOneDay)
    throw std::runtime_error("The simulated time is up: something waits for ever");
}

void SimulatedTime::fireOneDueBy(long time) {
  now_ = std::max(now_, time);
  holdToADay();
  if (!queue_.empty() && queue_.begin()->first <= time) {
    const Action action = queue_.begin()->second;
    queue_.erase(queue_.begin());
    action();
    return;
  }
  for (auto& [timer, state] : timers_) {
    if (state.due < 0 || state.due > time) continue;
    state.due = now_ + timer->interval();
    timer->tick();  // may change the table
    return;
  }
}

void SimulatedTime::advance(long ms, bool whileMainStays) {
  const long end = now_ + ms;
  for (long due = nextDue(); due >= 0 && due <= end; due = nextDue()) {
    if (whileMainStays && mainUnloaded()) return;
    fireOneDueBy(due);
  }
  if (!whileMainStays || !mainUnloaded()) now_ = std::max(now_, end);
}

void SimulatedTime::advanceToNext(long atMost) {
  const long due = nextDue();
  if (due >= 0 && due - now_ <= atMost) return fireOneDueBy(due);
  now_ += atMost;
  holdToADay();
}

}  // namespace pavoline::testing
