#include "stage.h"

#include "bridge/unix_side.h"
#include "driver/process.h"
#include "driver/window.h"

namespace e2e {
namespace {

std::string propPath(const std::string& prop) { return benchFolder() + "/props/" + prop; }
std::string volume(char drive) {
  return benchFolder() + "/volumes/" + static_cast<char>(tolower(drive));
}

void endEverything() {
  for (const char* program : {"Pavoline.exe", "wimlib-imagex.exe", "ghost.exe", "dism.exe"}) {
    bench::endProcesses(program);
  }
}

}  // namespace

std::string benchFolder() { return bench::runFolder(); }

void OnTheBench::SetUp() {
  endEverything();
  ASSERT_TRUE(bench::runBench("reset"));
}

void OnTheBench::TearDown() {
  if (HasFailure()) {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    bench::takeShot(std::string(test->test_suite_name()) + "." + test->name());
    printf("%s", bench::dumpWindows("Pavoline.exe").c_str());
    for (const auto& call : bench::journalCalls()) {
      printf("  ran %s %s -> %s %s\n", call.tool.c_str(), call.arguments.c_str(),
             call.result.c_str(), call.note.c_str());
    }
  }
  endEverything();
  for (const bench::Call& call : bench::journalCalls()) {
    if (call.refused() && !faultsAsked_) {
      ADD_FAILURE() << call.tool << " " << call.arguments << ": " << call.note;
    }
  }
}

void place(const std::string& prop, const std::string& path) {
  ASSERT_TRUE(bench::place(prop, path)) << path;
}

void placeSystem(int edition, char drive) {
  ASSERT_EQ(0, bench::runUnix({"cp", "-r", propPath("edition-" + std::to_string(edition)) + "/.",
                               volume(drive)}));
}

void write(const std::string& path, const std::string& bytes) {
  ASSERT_TRUE(bench::write(path, bytes)) << path;
}

std::string text(int number, const std::string& placeholder, const std::string& value) {
  return filled(text(number), placeholder, value);
}

std::vector<std::string> toolsRun() {
  std::vector<std::string> names;
  for (const bench::Call& call : bench::journalCalls()) {
    if (call.tool == "cxdir" || call.arguments.rfind("info ", 0) == 0) continue;
    names.push_back(call.tool);
  }
  return names;
}

std::vector<std::string> argumentsOf(const std::string& tool) {
  std::vector<std::string> result;
  for (const bench::Call& call : bench::callsOf(tool)) {
    if (call.arguments.rfind("info ", 0) != 0) result.push_back(call.arguments);
  }
  return result;
}

bool soon(const std::function<bool()>& condition, int milliseconds) {
  return bench::waitUntil(milliseconds, condition);
}

}  // namespace e2e
