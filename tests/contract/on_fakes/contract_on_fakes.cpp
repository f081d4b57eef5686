#include "contract/contract_platform.h"
#include "platform/text.h"
#include "support/fake_platform.h"

namespace pavoline::testing {
namespace {

class OnFakes : public ContractPlatform {
 public:
  OnFakes() {
    FurnishSystem(machine_);
    machine_.files.folder("X:\\Pavoline");
    machine_.files.put("C:\\test_contract.exe");
    machine_.processes.onStart("test_contract.exe --write", [](ToolRun& run) {
      const auto arguments = Split(run.line, "|");
      run.output = arguments[2];
      run.print(0, "begin");
      run.print(std::stol(arguments[1]), "end");
    });
    machine_.processes.onStart("echo", [](ToolRun& run) {
      run.print(0, run.line.substr(5, run.line.find('>') - 5) + "\r\n");
    });
  }
  Platform& platform() override { return machine_.platform; }
  std::string scratch() override {
    machine_.files.folder("E:\\scratch");
    return "E:\\scratch";
  }
  std::string writer(const std::string& file, int milliseconds) override {
    return "C:\\test_contract.exe --write|" + std::to_string(milliseconds) + "|" + file;
  }

 private:
  FakePlatform machine_;
};

}  // namespace

std::unique_ptr<ContractPlatform> MakeContractPlatform() { return std::make_unique<OnFakes>(); }

}  // namespace pavoline::testing
