// A Windows program that is whatever tool it is named after: it hands its arguments to the bench's
// script of that name, stays in the process list under the Windows name while the script runs, and
// returns its exit code. When this process is terminated the script is told and ends as well.

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "bridge/unix_side.h"

namespace {

std::wstring OwnName() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring name = path;
  name.erase(0, name.find_last_of(L"\\/") + 1);
  name.erase(std::min(name.size(), name.find(L'.')));
  std::transform(name.begin(), name.end(), name.begin(), ::towlower);
  return name;
}

// The Unix form of the path inside an argument such as E:\dir, /image:E:\ or /Driver:D:\DRIVERS.
std::string PathWithin(const std::wstring& argument) {
  for (size_t at = argument.find(L':'); at != std::wstring::npos;
       at = argument.find(L':', at + 1)) {
    if (at == 0 || !iswalpha(argument[at - 1])) continue;
    if (at > 1 && argument[at - 2] != L':' && argument[at - 2] != L'=') continue;
    std::wstring path = argument.substr(at - 1);
    if (path.size() == 2) path += L'\\';
    return bench::UnixPath(path);
  }
  if (argument.find(L'\\') != std::wstring::npos) return bench::UnixPath(argument);
  return {};
}

// The file that standard error goes to; empty when it goes to none. Wine hands a Unix program the
// two other streams only.
std::string ErrorFile() {
  const HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
  wchar_t path[MAX_PATH] = {};
  if (GetFileType(errors) != FILE_TYPE_DISK) return {};
  const DWORD length = GetFinalPathNameByHandleW(errors, path, MAX_PATH, FILE_NAME_NORMALIZED);
  return length > 0 && length < MAX_PATH ? bench::UnixPath(path) : std::string();
}

// Scripts cannot reach the mount manager; they leave lines "define F cdrom /path" or "define F
// none" here.
void DefineRequestedDrives(const std::string& requestFile) {
  FILE* file = _wfopen(bench::WindowsForm(requestFile).c_str(), L"rb");
  if (!file) return;
  char line[4096];
  while (fgets(line, sizeof(line), file)) {
    std::istringstream words(line);
    std::string verb, letter, kind, folder;
    words >> verb >> letter >> kind >> std::ws;
    std::getline(words, folder);
    if (verb == "define" && !letter.empty()) {
      bench::DefineDrive(static_cast<wchar_t>(letter[0]), kind, folder);
    }
  }
  fclose(file);
  DeleteFileW(bench::WindowsForm(requestFile).c_str());
}

}  // namespace

int main() {
  const std::string bench = bench::ToUtf8(bench::Environment(L"PAVOLINE_BENCH"));
  if (bench.empty()) {
    fputs("bridge: PAVOLINE_BENCH is not set\n", stderr);
    return 250;
  }
  const std::string request = bench + "/requests/" + std::to_string(GetCurrentProcessId());
  // The program's name may be quoted in part ("C:\PE"\Bin\x.exe), which the system's splitting
  // takes for two arguments and a C library, as a tool of that name has it, does not.
  int count = 0;
  wchar_t** values = CommandLineToArgvW((L"tool " + bench::RawArguments()).c_str(), &count);
  // The script is ended by a signal when the thread that started it is gone.
  std::vector<std::string> call = {"setpriv",
                                   "--pdeathsig",
                                   "TERM",
                                   "bash",
                                   bench + "/tools/run-tool",
                                   bench::ToUtf8(OwnName()),
                                   request,
                                   bench::ToUtf8(bench::RawArguments()),
                                   std::to_string(count - 1)};
  if (const std::string errors = ErrorFile(); !errors.empty()) {
    call.insert(call.begin(), {"bash", "-c", "exec \"$@\" 2>>\"$0\"", errors});
  }
  for (int i = 1; i < count; ++i) call.push_back(bench::ToUtf8(values[i]));
  for (int i = 1; i < count; ++i) call.push_back(PathWithin(values[i]));
  const int result = bench::RunUnix(call);
  DefineRequestedDrives(request);
  return result;
}
