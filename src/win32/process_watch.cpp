#include "win32/process_watch.h"

#include <algorithm>
#include <utility>

namespace pavoline {

unsigned ProcessWatch::add(HANDLE process, Action action) {
  watched_.push_back({nextNumber_, process, std::move(action)});
  return nextNumber_++;
}

void ProcessWatch::remove(unsigned number) {
  std::erase_if(watched_, [number](const Watched& each) { return each.number == number; });
}

std::vector<HANDLE> ProcessWatch::handles(HANDLE without) const {
  constexpr std::size_t kMost = 60;  // the system takes 63
  std::vector<HANDLE> result;
  for (const Watched& each : watched_) {
    if (each.process != without && result.size() < kMost) result.push_back(each.process);
  }
  return result;
}

ProcessWatch::Action ProcessWatch::takeEnded(unsigned before) {
  const auto ended = std::find_if(watched_.begin(), watched_.end(), [before](const Watched& each) {
    return each.number < before && WaitForSingleObject(each.process, 0) == WAIT_OBJECT_0;
  });
  if (ended == watched_.end()) return {};
  Action action = std::move(ended->action);
  watched_.erase(ended);
  return action;
}

}  // namespace pavoline
