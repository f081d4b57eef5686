#include "stage.h"

#include <windows.h>

#include <algorithm>

#include "bridge/unix_side.h"
#include "driver/process.h"
#include "driver/window.h"

namespace e2e {
namespace {

std::string propPath(const std::string& prop) { return benchFolder() + "/props/" + prop; }
std::string volume(char drive) {
  return benchFolder() + "/volumes/" + static_cast<char>(tolower(drive));
}

std::wstring wide(const std::string& path) { return bench::fromUtf8(path); }

void endEverything() {
  for (const char* program : {"Pavoline.exe", "wimlib-imagex.exe", "ghost.exe", "dism.exe"}) {
    bench::endProcesses(program);
  }
}

std::string profile(const std::string& file, const wchar_t* section, const std::string& key) {
  wchar_t value[1024] = {};
  // Cached contents would hide what the program has written since.
  WritePrivateProfileStringW(nullptr, nullptr, nullptr, wide(file).c_str());
  GetPrivateProfileStringW(section, wide(key).c_str(), L"", value, 1024, wide(file).c_str());
  return bench::toUtf8(value);
}

}  // namespace

std::string benchFolder() { return bench::toUtf8(bench::environment(L"PAVOLINE_BENCH")); }

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
  makeFolder(path.substr(0, path.find_last_of('\\')));
  const std::string target = bench::unixPath(wide(path));
  ASSERT_EQ(0, bench::runUnix({"cp", "--sparse=always", propPath(prop), target})) << path;
}

void placeSystem(int edition, char drive) {
  ASSERT_EQ(0, bench::runUnix({"cp", "-r", propPath("edition-" + std::to_string(edition)) + "/.",
                               volume(drive)}));
}

bool holdsSystem(int edition, char drive) {
  return bench::runUnix({"diff", "-rq", "--exclude=Panther", "--exclude=DriverStore",
                         propPath("edition-" + std::to_string(edition)), volume(drive)}) == 0;
}

void write(const std::string& path, const std::string& bytes) {
  makeFolder(path.substr(0, path.find_last_of('\\')));
  FILE* file = _wfopen(wide(path).c_str(), L"wb");
  ASSERT_NE(file, nullptr) << path;
  EXPECT_EQ(fwrite(bytes.data(), 1, bytes.size(), file), bytes.size());
  fclose(file);
}

std::string read(const std::string& path) {
  FILE* file = _wfopen(wide(path).c_str(), L"rb");
  if (!file) return {};
  std::string bytes;
  char part[4096];
  while (const size_t count = fread(part, 1, sizeof part, file)) bytes.append(part, count);
  fclose(file);
  return bytes;
}

bool exists(const std::string& path) {
  return GetFileAttributesW(wide(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void makeFolder(const std::string& path) {
  for (size_t end = path.find('\\', 3); end != std::string::npos; end = path.find('\\', end + 1)) {
    CreateDirectoryW(wide(path.substr(0, end)).c_str(), nullptr);
  }
  CreateDirectoryW(wide(path).c_str(), nullptr);
}

void writeSettings(const std::string& lines) {
  write(std::string(kAppFolder) + "\\Pavoline.ini", "[Option]\r\n" + lines + "\r\n");
}

std::string setting(const std::string& key) {
  return profile(std::string(kAppFolder) + "\\Pavoline.ini", L"Option", key);
}

std::string text(int number) {
  return profile(std::string(kAppFolder) + "\\Lang\\1033.lng", L"Language",
                 "String(" + std::to_string(number) + ")");
}

std::string text(int number, const std::string& placeholder, const std::string& value) {
  return filled(text(number), placeholder, value);
}

std::string more(int number) {
  return profile(std::string(kAppFolder) + "\\Lang\\1033.lng", L"More",
                 "More(" + std::to_string(number) + ")");
}

std::string filled(std::string text, const std::string& placeholder, const std::string& value) {
  const size_t at = text.find(placeholder);
  return at == std::string::npos ? "no " + placeholder
                                 : text.replace(at, placeholder.size(), value);
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
