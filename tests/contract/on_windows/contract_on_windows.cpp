#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "contract/contract_platform.h"
#include "win32/wide_text.h"
#include "win32/win_platform.h"

namespace pavoline::testing {
namespace {

std::wstring OwnPath() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

class OnWindows : public ContractPlatform {
 public:
  OnWindows() {
    wchar_t temp[MAX_PATH] = {}, unique[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, temp);
    GetTempFileNameW(temp, L"pav", 0, unique);
    DeleteFileW(unique);
    CreateDirectoryW(unique, nullptr);
    scratch_ = Narrow(unique);
  }
  // Not through the shell: Wine's takes a path beyond its old limit for the current folder, and
  // empties that.
  ~OnWindows() override {
    std::error_code ignored;
    std::filesystem::remove_all(L"\\\\?\\" + Wide(scratch_), ignored);
  }

  Platform& platform() override { return windows_.platform(); }
  std::string scratch() override { return scratch_; }
  std::string writer(const std::string& file, int milliseconds) override {
    return "\"" + Narrow(OwnPath()) + "\" --write " + std::to_string(milliseconds) + " \"" + file +
           "\"";
  }

 private:
  std::string scratch_;
  WinPlatform windows_;
};

// What `writer` starts: this very program with other arguments.
int Write(int milliseconds, const wchar_t* file) {
  std::FILE* out = _wfopen(file, L"wb");
  if (out == nullptr) return 1;
  std::fputs("begin", out);
  std::fflush(out);
  std::fputs("said", stdout);
  std::fflush(stdout);
  std::fputs("why", stderr);
  std::fflush(stderr);
  Sleep(static_cast<DWORD>(milliseconds));
  std::fputs("end", out);
  std::fclose(out);
  return kWriterCode;
}

}  // namespace

std::unique_ptr<ContractPlatform> MakeContractPlatform() { return std::make_unique<OnWindows>(); }

}  // namespace pavoline::testing

int wmain(int count, wchar_t** arguments) {
  if (count == 4 && std::wstring(arguments[1]) == L"--write") {
    return pavoline::testing::Write(std::wcstol(arguments[2], nullptr, 10), arguments[3]);
  }
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
