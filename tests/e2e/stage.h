#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "bridge/unix_side.h"
#include "driver/bench_run.h"
#include "driver/drive_files.h"

// The bench as a test finds it, and what a test may look at behind the program's back.
namespace e2e {

using bench::Exists;
using bench::Filled;
using bench::HoldsSystem;
using bench::kAppFolder;
using bench::MakeFolder;
using bench::More;
using bench::Read;
using bench::Setting;
using bench::Text;
using bench::WriteSettings;

inline const std::string kArch = sizeof(void*) == 8 ? "x64" : "x86";  // the tools' folders
inline constexpr char kImage[] = "D:\\Images\\small.wim";
inline constexpr int kPatience = 60'000;  // milliseconds; only a failure waits that long

// Every test begins with empty drives D: (source), S: (boot) and E: (install), an empty journal and
// the application as shipped. It ends with no program left, and fails when a tool was called in a
// way that the real one would have refused.
class OnTheBench : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  bool faultsAsked_ = false;  // a tool is made to fail: its journal line says ERROR
};

// Files of bench/driver/drive_files.h; the test ends when one cannot be made.
void Place(const std::string& prop, const std::string& path);
void Write(const std::string& path, const std::string& bytes);
// The second edition, or the first, as files on a drive.
void PlaceSystem(int edition, char drive);

std::string BenchFolder();  // as a Unix path

// A text of the shipped language file; `value` stands for the placeholder.
std::string Text(int number, const std::string& placeholder, const std::string& value);

// Names of the tools run so far, the lister of partitions and the reader of images left out, and
// "tool arguments" of one of them.
std::vector<std::string> ToolsRun();
std::vector<std::string> ArgumentsOf(const std::string& tool);

bool Soon(const std::function<bool()>& condition, int milliseconds = kPatience);

}  // namespace e2e
