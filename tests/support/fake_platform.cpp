#include "support/fake_platform.h"

#include <string>

namespace pavoline::testing {

void FurnishSystem(FakePlatform& machine) {
  machine.drives.add("X:");
  machine.drives.add("C:", kDriveFixed, VolumePosition{1, 1});
  machine.drives.add("D:", kDriveFixed, VolumePosition{1, 2});
  machine.drives.add("E:", kDriveFixed, VolumePosition{2, 1});
  machine.environment.variables = {{"windir", "C:\\Windows"},
                                   {"systemroot", "C:\\Windows"},
                                   {"systemdrive", "X:"},
                                   {"comspec", "C:\\Windows\\System32\\cmd.exe"}};
  machine.files.folder("C:\\Windows\\temp");
  machine.files.folder("C:\\Windows\\SysWOW64");
  for (const char* name : {"cmd.exe", "format.com", "shutdown.exe", "diskpart.exe", "bcdboot.exe",
                           "bootsect.exe", "dism.exe", "takeown.exe", "cacls.exe", "imdisk.exe"}) {
    machine.files.put(std::string("C:\\Windows\\System32\\") + name);
  }
  machine.files.version("C:\\Windows\\System32\\kernel32.dll", "10.0.19041.1");
}

}  // namespace pavoline::testing
