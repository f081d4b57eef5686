#include <gtest/gtest.h>

#include "form/control_status.h"
#include "session/activity_scope.h"
#include "support/workshop.h"

namespace pavoline::testing {

struct Scope : ::testing::Test, Workshop {
  Scope() {
    session.activityChanged = [this] { seen += std::to_string(static_cast<int>(now())) + " "; };
  }
  Activity now() const { return session.activity; }
  int locked() {
    int count = 0;
    for (const Control* control : InputsOf(form)) count += control->enabled() ? 0 : 1;
    return count;
  }
  std::string seen;  // every change, in numbers
};

TEST_F(Scope, LocksWhatItFindsOpenAndLeadsBackByTheWayItCame) {
  form.search.setEnabled(false);
  const int before = locked();
  {
    ActivityScope checking(session, Activity::kChecking);
    EXPECT_EQ(locked(), static_cast<int>(InputsOf(form).size()));
    const ActivityScope reading(session, Activity::kReadingSource);
    EXPECT_FALSE(form.combo1.enabled());
  }
  EXPECT_EQ(locked(), before);
  EXPECT_FALSE(form.search.enabled());
  EXPECT_EQ(seen, "4 3 4 1 ");

  ActivityScope kept;
  kept = ActivityScope(session, Activity::kReadingSource);
  EXPECT_EQ(now(), Activity::kReadingSource);
  for (int times = 0; times < 2; ++times) kept.leave();
  EXPECT_TRUE(now() == Activity::kIdle && form.combo1.enabled());
}

TEST_F(Scope, NothingLeadsOutOfAClosedWindow) {
  ActivityScope installing(session, Activity::kInstalling);
  session.activity = Activity::kClosed;
  { const ActivityScope listing(session, Activity::kChecking); }
  installing.leave();
  EXPECT_EQ(now(), Activity::kClosed);
  EXPECT_TRUE(form.command1[kStart].enabled());
}

}  // namespace pavoline::testing
