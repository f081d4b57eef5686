#pragma once

#include <functional>

#include "form/form1.h"
#include "platform/platform.h"
#include "session/session.h"
#include "support/fake_dialogs.h"
#include "support/fake_files.h"
#include "support/fake_machine.h"
#include "support/fake_processes.h"
#include "support/fake_profile.h"
#include "support/fake_text.h"
#include "support/simulated_time.h"

namespace pavoline::testing {

// A machine in memory: one fake for each interface of the platform.
struct FakePlatform {
  SimulatedTime time;
  FakeFiles files;
  FakeEnvironment environment{time};
  FakeDrives drives{files};
  FakeTextServices text;
  FakeProfile profile{files, text};
  FakeForeignWindows windows;
  FakeTaskbar taskbar;
  FakeDialogs dialogs{time};
  FakeProcesses processes{time, files, environment};

  Platform platform{processes, files,   drives,  profile, environment,
                    text,      windows, taskbar, dialogs};
};

// The pre-installation environment on such a machine with the program in it, ready to be used:
// the program lies in X:\Pavoline, the system in C:\Windows, D: and E: are empty fixed drives, and
// the texts are "S0" to "S114" and "C0" to "C12" with their placeholders behind ("S15 %bp%").
struct Workshop : FakePlatform {
  Workshop();

  Form1 form;
  Session session{platform, form};

  void run(long ms) { time.advance(ms); }
  // False when the time went by (an hour at most) and it never came true.
  bool runUntil(const std::function<bool()>& reached, long limitMs = 3600 * 1000);

  bool said(const std::string& partOfMessage) const;
  std::vector<std::string> heard() const;  // "text|title|flags" of every message
};

}  // namespace pavoline::testing
