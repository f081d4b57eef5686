#pragma once

#include "session/session.h"

namespace pavoline {

// Stands while a tool runs for the source box: a new text that reaches the box all the same (from a
// timer, a dialog) waits for the tool's end.
class SourceWait {
 public:
  explicit SourceWait(Session& session)
      : session_(session), wasWaiting_(session.sourceRun.waiting) {
    if (!wasWaiting_) session_.sourceRun.source = session_.form.combo1.text();
    session_.sourceRun.waiting = true;
  }
  ~SourceWait() { session_.sourceRun.waiting = wasWaiting_; }
  SourceWait(const SourceWait&) = delete;
  SourceWait& operator=(const SourceWait&) = delete;

 private:
  Session& session_;
  bool wasWaiting_;
};

}  // namespace pavoline
