#pragma once

#include <memory>
#include <string>

#include "platform/drives.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/foreign_windows.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/profile.h"
#include "platform/text_services.h"

namespace pavoline::testing {

// What the contract is tried on: the fakes on the machine that builds them, or the adapter on a
// Windows. Promises that a person at the screen would have to see kept are not tried here.
class ContractPlatform {
 public:
  virtual ~ContractPlatform() = default;
  virtual Platform& platform() = 0;

  // An empty folder of this test's own, no backslash at its end.
  virtual std::string scratch() = 0;

  // A command line that starts a program which writes "begin" to a file, "said" to its standard
  // output and "why" to its standard error, waits, adds "end" and exits with kWriterCode. Its image
  // is listed as kWriterImage.
  virtual std::string writer(const std::string& file, int milliseconds) = 0;

  // Opens a top-level window, which stays until this object goes.
  virtual ForeignWindow openWindow(const std::string& className, const std::string& title) = 0;
};

inline constexpr char kWriterImage[] = "test_contract.exe";
inline constexpr std::uint32_t kWriterCode = 47;

std::unique_ptr<ContractPlatform> MakeContractPlatform();

}  // namespace pavoline::testing
