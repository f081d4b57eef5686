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

using bench::exists;
using bench::filled;
using bench::holdsSystem;
using bench::kAppFolder;
using bench::makeFolder;
using bench::more;
using bench::read;
using bench::setting;
using bench::text;
using bench::writeSettings;

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
void place(const std::string& prop, const std::string& path);
void write(const std::string& path, const std::string& bytes);
// The second edition, or the first, as files on a drive.
void placeSystem(int edition, char drive);

std::string benchFolder();  // as a Unix path

// A text of the shipped language file; `value` stands for the placeholder.
std::string text(int number, const std::string& placeholder, const std::string& value);

// Names of the tools run so far, the lister of partitions and the reader of images left out, and
// "tool arguments" of one of them.
std::vector<std::string> toolsRun();
std::vector<std::string> argumentsOf(const std::string& tool);

bool soon(const std::function<bool()>& condition, int milliseconds = kPatience);

}  // namespace e2e
