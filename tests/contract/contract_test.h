#pragma once

#include <gmock/gmock.h>

#include "contract/contract_platform.h"

namespace pavoline::testing {

class Contract : public ::testing::Test {
 protected:
  std::string path(const std::string& name) const { return folder_ + "\\" + name; }

  std::unique_ptr<ContractPlatform> machine_ = MakeContractPlatform();
  std::string folder_ = machine_->scratch();
  Platform& platform_ = machine_->platform();
  Files& files_ = platform_.files;
};

}  // namespace pavoline::testing
