#include "faults/remains.h"

#include <windows.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "bridge/unix_side.h"
#include "driver/drive_files.h"
#include "driver/process.h"
#include "driver/window.h"
#include "faults/scene.h"

namespace faults {
namespace {

std::set<std::string> FilesIn(const std::string& folder) {
  std::set<std::string> names;
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(bench::FromUtf8(folder + "*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    std::string name = bench::ToUtf8(found.cFileName);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return isdigit(c); }, '#');
    // A list that is just being made stays when the program ends.
    const bool passing = name == "Pavoline.log" || name == "GetPart.log";
    if (name[0] != '.' && !passing) names.insert(name);
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return names;
}

std::string OnTarget(int edition) {
  if (!bench::Exists("E:\\")) return "gone";
  const bool old = bench::Exists(kOldFile);
  const bool begun = bench::Exists("E:\\Windows") || bench::Exists("E:\\Program Files");
  if (SystemComplete(edition)) return old ? "the system among the old files" : "the system";
  if (begun) return old ? "part of the system among the old files" : "part of the system";
  return old ? "old files" : "empty";
}

std::string Menu() {
  if (MenuNew()) return "new menu";
  if (bench::Read(kStore) == kOldMenu) return "old menu";
  return bench::Exists(std::string(kStore) + ".before") ? "old menu set aside" : "no menu";
}

std::string Joined(const std::set<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

std::set<std::string> ToolsRunning() {
  std::set<std::string> running;
  for (const char* tool : kTools) {
    if (bench::IsRunning(tool)) running.insert(tool);
  }
  return running;
}

}  // namespace

std::string LeftBehind(int edition) {
  // What is started without being waited for takes a while; a file that a program still held goes
  // with its last handle.
  constexpr ULONGLONG kLongest = 20000;
  const auto settled = [] {
    const bool begins = bench::IsRunning("cmd.exe") && ToolsRunning().empty();
    return !begins && !bench::IsRunning("imdisk.exe") && !bench::IsRunning("shutdown.exe") &&
           !FilesIn(kTemp).contains("tool#.err");
  };
  bench::WaitUntil(kLongest, settled);
  std::string text = "E: " + OnTarget(edition) + "; S: " + Menu();
  if (const auto files = FilesIn(kTemp); !files.empty()) text += "; temp: " + Joined(files);
  if (const auto running = ToolsRunning(); !running.empty()) {
    text += "; runs on: " + Joined(running);
  }
  std::string drives;
  for (char letter = 'F'; letter <= 'Z'; ++letter) {
    if (letter != 'S' && bench::Exists({letter, ':', '\\'})) drives += letter;
  }
  if (!drives.empty()) text += "; another drive " + drives + ":";
  if (Shell("[[ -f $bench/restart ]]")) text += "; restart";
  return text;
}

bool SystemComplete(int edition) {
  const bool old = DeleteFileA(kOldFile);
  const bool complete = bench::HoldsSystem(edition, 'E');
  if (old) bench::Write(kOldFile, "stays");
  return complete;
}

bool MenuNew() { return bench::Read(kStore).find("windows=E:\\Windows") != std::string::npos; }

bool DriversIn() {
  return Shell(
      "(($(find \"$bench/volumes/e/Windows/System32/DriverStore\" -name '[ab].inf' | wc -l) == "
      "2))");
}

bool OtherDrivesWhole() { return bench::Read("D:\\letter.txt") == "stays"; }

std::string Recorded() {
  std::string last;
  const std::string log = "Pavoline.log";
  std::istringstream lines(bench::Read(kTemp + log) +
                           bench::Read(std::string(bench::kAppFolder) + "\\" + log));
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const size_t at = line.find("outcome: ");
    if (at != std::string::npos)
      last = line.substr(at + 9);
    else if (last.empty() && line.find("  closed, ") != std::string::npos)
      last = line.substr(line.find("  closed, ") + 2);
  }
  return last;
}

}  // namespace faults
