#include "session/activity.h"

#include <initializer_list>

namespace pavoline {
namespace {

constexpr unsigned Bit(Action action) { return 1u << static_cast<unsigned>(action); }

constexpr unsigned Of(std::initializer_list<Action> actions) {
  unsigned bits = 0;
  for (const Action action : actions) bits |= Bit(action);
  return bits;
}

constexpr unsigned kEverything = (Bit(Action::kLook) << 1) - 1;

struct Rule {
  Activity activity;
  unsigned allowed;
  Closing closing;
};

// While partitions are listed the source may be chosen already, but nothing may start. Inside a
// reading the source box's own chain of changes goes on; nobody else changes it.
constexpr Rule kRules[] = {
    {Activity::kStarting, Of({Action::kTakeSource, Action::kSetOptions, Action::kLook}),
     Closing::kFree},
    {Activity::kIdle, kEverything, Closing::kFree},
    {Activity::kListing, Of({Action::kTakeSource, Action::kSetOptions, Action::kLook}),
     Closing::kFree},
    {Activity::kReadingSource, Of({Action::kSetOptions, Action::kChoose, Action::kLook}),
     Closing::kFree},
    {Activity::kChecking, Of({Action::kLook}), Closing::kFree},
    {Activity::kInstalling, Of({Action::kLook}), Closing::kAsk},
    {Activity::kRepairingBoot, Of({Action::kLook}), Closing::kAsk},
    {Activity::kPreparingDisk, Of({Action::kLook}), Closing::kAsk},
    {Activity::kVirtualDisk, Of({Action::kLook}), Closing::kWait},
    {Activity::kClosed, 0, Closing::kFree},
};

const Rule& RuleOf(Activity activity) { return kRules[static_cast<int>(activity)]; }

constexpr bool InOrder() {
  int place = 0;
  for (const Rule& rule : kRules) {
    if (static_cast<int>(rule.activity) != place++) return false;
  }
  return true;
}
static_assert(InOrder(), "a rule is found by its activity's place");

}  // namespace

bool MayDo(Activity activity, Action action) {
  return (RuleOf(activity).allowed & Bit(action)) != 0;
}

bool ChangesDisks(Action action) {
  return (Of({Action::kVirtualDisks, Action::kRepairBoot, Action::kPrepareDisk}) & Bit(action)) !=
         0;
}

Closing ClosingDuring(Activity activity) { return RuleOf(activity).closing; }

}  // namespace pavoline
