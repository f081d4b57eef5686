#pragma once

#include "platform/platform.h"
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
  FakePlatform() {
    files.onEntry = [this] { time.pass(20); };  // milliseconds
  }
  FakePlatform(const FakePlatform&) = delete;
  FakePlatform& operator=(const FakePlatform&) = delete;

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

// The drives, folders, tools and variables of a pre-installation environment: the system in
// C:\Windows; X:, D: and E: empty.
void FurnishSystem(FakePlatform& machine);

}  // namespace pavoline::testing
