#pragma once

#include <string>
#include <vector>

#include "session/ground.h"

namespace pavoline {

// The boot stores on a partition while new ones are made: set aside at the beginning, in the end
// either gone, because a new one stands in their place, or put back.
class BootStores {
 public:
  BootStores(Ground& ground, const std::string& bootDrive);
  ~BootStores() { settle(); }
  BootStores(const BootStores&) = delete;
  BootStores& operator=(const BootStores&) = delete;

  // Decides for each store; true when one had to be put back.
  bool settle();

 private:
  Ground& ground_;
  std::vector<std::string> aside_;  // paths of the stores themselves
};

// Where the stores for BIOS and for UEFI lie on a boot partition.
std::string BiosStore(const std::string& bootDrive);
std::string UefiStore(const std::string& bootDrive);

}  // namespace pavoline
