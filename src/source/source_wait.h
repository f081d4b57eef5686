#pragma once

#include "session/session.h"

namespace pavoline {

// Stands while a tool runs for the source box: the box is disabled, and a new text that reaches it
// all the same (from a timer, a dialog) waits for the tool's end.
class SourceWait {
 public:
  explicit SourceWait(Session& session)
      : session_(session),
        wasEnabled_(session.form.combo1.enabled()),
        wasWaiting_(session.sourceRun.waiting) {
    session_.form.combo1.setEnabled(false);
    if (!wasWaiting_) session_.sourceRun.source = session_.form.combo1.text();
    session_.sourceRun.waiting = true;
  }
  ~SourceWait() {
    session_.sourceRun.waiting = wasWaiting_;
    // An installation that began meanwhile keeps the box disabled.
    if (wasEnabled_ && !session_.form.busy) session_.form.combo1.setEnabled(true);
  }
  SourceWait(const SourceWait&) = delete;
  SourceWait& operator=(const SourceWait&) = delete;

 private:
  Session& session_;
  bool wasEnabled_, wasWaiting_;
};

}  // namespace pavoline
