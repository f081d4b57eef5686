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
    machine_.processes.onStart("test_contract.exe --write", [this](ToolRun& run) {
      const auto arguments = Split(run.line.substr(0, run.line.find(" >")), "|");
      const auto writes = [this, file = arguments[2]](const std::string& text) {
        return [this, file, text] { machine_.files.append(file, text); };
      };
      run.does(0, writes("begin"));
      run.print(0, "said");
      run.complain(0, "why");
      run.does(std::stol(arguments[1]), writes("end"));
      run.exits(kWriterCode);
    });
    machine_.processes.onStart("/c exit ", [](ToolRun& run) {
      run.exits(static_cast<std::uint32_t>(std::stoul(run.line.substr(run.line.rfind(' ')))));
    });
    machine_.processes.onStart("echo", [](ToolRun& run) {
      if (run.line.starts_with("@")) return;
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

  ForeignWindow openWindow(const std::string& className, const std::string& title) override {
    constexpr std::uint32_t kSomeProcess = 7;
    return machine_.windows.open(className, title, kSomeProcess);
  }

 private:
  FakePlatform machine_;
};

}  // namespace

std::unique_ptr<ContractPlatform> MakeContractPlatform() { return std::make_unique<OnFakes>(); }

}  // namespace pavoline::testing
