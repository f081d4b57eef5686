#include "postinstall/boot_stores.h"

#include "platform/files.h"
#include "run/tool_files.h"

namespace pavoline {
namespace {

std::string Aside(const std::string& store) { return store + ".before"; }

}  // namespace

std::string BiosStore(const std::string& bootDrive) { return bootDrive + "\\boot\\bcd"; }
std::string UefiStore(const std::string& bootDrive) {
  return bootDrive + "\\EFI\\Microsoft\\Boot\\bcd";
}

BootStores::BootStores(Ground& ground, const std::string& bootDrive) : ground_(ground) {
  Files& files = ground.platform.files;
  for (const std::string& store : {BiosStore(bootDrive), UefiStore(bootDrive)}) {
    if (!files.exists(store)) {
      // A run that was cut off left it so.
      if (files.exists(Aside(store))) aside_.push_back(store);
      continue;
    }
    if (files.exists(Aside(store))) files.deleteTreeQuietly(Aside(store));
    if (files.rename(store, Aside(store))) {
      aside_.push_back(store);
    } else {
      Journal(ground, "boot store stays, it cannot be set aside: " + store);
    }
  }
}

bool BootStores::settle() {
  Files& files = ground_.platform.files;
  bool putBack = false;
  for (const std::string& store : aside_) {
    if (files.exists(store)) {
      ground_.platform.files.deleteTreeQuietly(Aside(store));
    } else if (files.rename(Aside(store), store)) {
      Journal(ground_, "boot store put back: " + store);
      putBack = true;
    } else {
      Journal(ground_, "boot store could not be put back, it lies at " + Aside(store));
    }
  }
  aside_.clear();
  return putBack;
}

}  // namespace pavoline
