#include "stage.h"

#include "bridge/unix_side.h"
#include "driver/process.h"
#include "driver/window.h"

namespace e2e {
namespace {

std::string PropPath(const std::string& prop) { return BenchFolder() + "/props/" + prop; }
std::string Volume(char drive) {
  return BenchFolder() + "/volumes/" + static_cast<char>(tolower(drive));
}

void EndEverything() {
  for (const char* program : {"Pavoline.exe", "wimlib-imagex.exe", "ghost.exe", "dism.exe"}) {
    bench::EndProcesses(program);
  }
}

}  // namespace

std::string BenchFolder() { return bench::RunFolder(); }

void OnTheBench::SetUp() {
  EndEverything();
  ASSERT_TRUE(bench::RunBench("reset"));
}

void OnTheBench::TearDown() {
  if (HasFailure()) {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    bench::TakeShot(std::string(test->test_suite_name()) + "." + test->name());
    printf("%s", bench::DumpWindows("Pavoline.exe").c_str());
    for (const auto& call : bench::JournalCalls()) {
      printf("  ran %s %s -> %s %s\n", call.tool.c_str(), call.arguments.c_str(),
             call.result.c_str(), call.note.c_str());
    }
  }
  EndEverything();
  for (const bench::Call& call : bench::JournalCalls()) {
    if (call.refused() && !faultsAsked_) {
      ADD_FAILURE() << call.tool << " " << call.arguments << ": " << call.note;
    }
  }
}

void Place(const std::string& prop, const std::string& path) {
  ASSERT_TRUE(bench::Place(prop, path)) << path;
}

void PlaceSystem(int edition, char drive) {
  ASSERT_EQ(0, bench::RunUnix({"cp", "-r", PropPath("edition-" + std::to_string(edition)) + "/.",
                               Volume(drive)}));
}

void Write(const std::string& path, const std::string& bytes) {
  ASSERT_TRUE(bench::Write(path, bytes)) << path;
}

std::string Text(int number, const std::string& placeholder, const std::string& value) {
  return Filled(Text(number), placeholder, value);
}

std::vector<std::string> ToolsRun() {
  std::vector<std::string> names;
  for (const bench::Call& call : bench::JournalCalls()) {
    if (call.tool == "cxdir" || call.arguments.rfind("info ", 0) == 0) continue;
    names.push_back(call.tool);
  }
  return names;
}

std::vector<std::string> ArgumentsOf(const std::string& tool) {
  std::vector<std::string> result;
  for (const bench::Call& call : bench::CallsOf(tool)) {
    if (call.arguments.rfind("info ", 0) != 0) result.push_back(call.arguments);
  }
  return result;
}

bool Soon(const std::function<bool()>& condition, int milliseconds) {
  return bench::WaitUntil(milliseconds, condition);
}

}  // namespace e2e
