#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "bridge/unix_side.h"
#include "driver/bench_run.h"

// The bench as a test finds it, and what a test may look at behind the program's back.
namespace e2e {

inline constexpr char kAppFolder[] = "C:\\Program Files\\Pavoline";
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

// Files made for the tests: small.wim and large.wim (two editions), small.gho, install.iso,
// without-image.iso.
void place(const std::string& prop, const std::string& path);
// The second edition, or the first, as files on a drive.
void placeSystem(int edition, char drive);
// True when the drive holds every file of the edition, byte for byte, and besides only what an
// installation adds.
bool holdsSystem(int edition, char drive);

std::string benchFolder();  // as a Unix path

void write(const std::string& path, const std::string& bytes);
std::string read(const std::string& path);  // empty when there is no such file
bool exists(const std::string& path);
void makeFolder(const std::string& path);  // with the folders above it
void writeSettings(const std::string& lines);
std::string setting(const std::string& key);

// A text of the shipped language file, by its number; `value` stands for the placeholder.
std::string text(int number);
std::string text(int number, const std::string& placeholder, const std::string& value);
// The same of the third table.
std::string more(int number);
std::string filled(std::string text, const std::string& placeholder, const std::string& value);

// Names of the tools run so far, the lister of partitions and the reader of images left out, and
// "tool arguments" of one of them.
std::vector<std::string> toolsRun();
std::vector<std::string> argumentsOf(const std::string& tool);

bool soon(const std::function<bool()>& condition, int milliseconds = kPatience);

}  // namespace e2e
