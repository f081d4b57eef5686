#include "driver/bench_run.h"

#include <windows.h>

#include <cstdio>
#include <sstream>

#include "bridge/unix_side.h"
#include "driver/drive_files.h"

namespace bench {
namespace {

std::string ReadAll(const std::string& unixFile) {
  FILE* file = _wfopen(WindowsForm(unixFile).c_str(), L"rb");
  if (!file) return {};
  std::string content;
  char part[4096];
  while (const size_t count = fread(part, 1, sizeof(part), file)) content.append(part, count);
  fclose(file);
  return content;
}

// Drives that ISO files and virtual disks brought; the bench's own are D:, E: and S:.
void RemoveAddedDrives() {
  for (wchar_t letter = L'F'; letter <= L'Z'; ++letter) {
    const std::wstring root = std::wstring(1, letter) + L":\\";
    if (letter != L'S' && GetDriveTypeW(root.c_str()) > DRIVE_NO_ROOT_DIR) {
      DefineDrive(letter, "none", "");
    }
  }
}

}  // namespace

std::vector<Call> JournalCalls() {
  std::vector<Call> calls;
  std::istringstream lines(ReadAll(RunFolder() + "/journal"));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    Call call;
    std::getline(fields, call.tool, '\t');
    std::getline(fields, call.arguments, '\t');
    std::getline(fields, call.result, '\t');
    std::getline(fields, call.note, '\t');
    calls.push_back(call);
  }
  return calls;
}

std::vector<Call> CallsOf(const std::string& tool) {
  std::vector<Call> calls = JournalCalls();
  std::erase_if(calls, [&](const Call& call) { return call.tool != tool; });
  return calls;
}

void SetFaults(const std::string& tool, const std::string& lines) {
  FILE* file = _wfopen(WindowsForm(RunFolder() + "/faults/" + tool).c_str(), L"wb");
  if (!file) return;
  fputs((lines + "\n").c_str(), file);
  fclose(file);
}

bool RunBench(const std::string& verb, const std::vector<std::string>& arguments) {
  std::vector<std::string> call = {"bash", RunFolder() + "/bench", verb, RunFolder()};
  call.insert(call.end(), arguments.begin(), arguments.end());
  if (verb == "reset") RemoveAddedDrives();
  return RunUnix(call) == 0;
}

bool TakeShot(const std::string& name) {
  return RunUnix({"bash", "-c", "mkdir -p \"$1/shots\" && import -window root \"$1/shots/$2.png\"",
                  "shot", RunFolder(), name}) == 0;
}

bool PlaceCompanion(const std::string& windowsPath) {
  const std::string target = UnixPath(FromUtf8(windowsPath));
  return !target.empty() && RunUnix({"cp", RunFolder() + "/companion.exe", target}) == 0;
}

}  // namespace bench
