#pragma once

#include <windows.h>

#include <functional>
#include <vector>

namespace pavoline {

// The processes whose ends somebody wants to hear of. The message loop waits for them and calls.
class ProcessWatch {
 public:
  using Action = std::function<void()>;

  // Gives a number to let go by. The handle stays the caller's, and open until the action was
  // called or let go.
  unsigned add(HANDLE process, Action action);
  void remove(unsigned number);

  // What a wait listens to: those watched longest, as many as a wait takes beside messages and a
  // handle of its own. `without` is left out, as no handle may stand there twice.
  std::vector<HANDLE> handles(HANDLE without) const;

  // Takes an action out whose process has ended, of those added before this number; empty when
  // there is none.
  Action takeEnded(unsigned before);
  unsigned nextNumber() const { return nextNumber_; }

 private:
  struct Watched {
    unsigned number;
    HANDLE process;
    Action action;
  };

  std::vector<Watched> watched_;
  unsigned nextNumber_ = 1;
};

}  // namespace pavoline
