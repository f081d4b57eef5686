#include "faults/scene.h"

#include <windows.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>

#include "bridge/unix_side.h"
#include "driver/bench_run.h"
#include "driver/drive_files.h"
#include "driver/process.h"
#include "driver/window.h"

namespace faults {
namespace {

std::vector<std::pair<std::string, std::string>> moved;  // where it belongs, where it is
std::vector<std::string> mounted;                        // Unix folders

void Must(bool done, const std::string& what) {
  if (!done) throw std::runtime_error("could not " + what);
}

std::string UnixOf(const std::string& path) { return bench::UnixPath(bench::FromUtf8(path)); }

// "bin\x" and "sys\x" are the program's tools and the system's.
std::string FullPath(const std::string& path) {
  const std::string rest = path.substr(path.find('\\') + 1);
  if (path.starts_with("bin\\")) return std::string(bench::kAppFolder) + "\\Bin\\" + rest;
  if (path.starts_with("sys\\")) return "C:\\windows\\system32\\" + rest;
  return path;
}

void TakeAway(const std::string& path) {
  const std::string away = path + ".away";
  Must(MoveFileA(path.c_str(), away.c_str()), "take away " + path);
  moved.emplace_back(path, away);
}

// A file of the name that no system can run.
void BreakProgram(const std::string& path) {
  TakeAway(path);
  Must(bench::Write(path, "MZ, and nothing that could be run"), "break " + path);
}

void PutBridge(const std::string& path) {
  Must(Shell("cp \"$bench/bridge.exe\" \"$1\"", UnixOf(path)), "put the bridge at " + path);
}

// The script runs the real lister, which stands elsewhere meanwhile.
void PutListerBehindBridge() {
  const std::string lister = FullPath("bin\\CxDir\\x64\\CxDir.exe");
  CopyFileA(lister.c_str(), "C:\\lister.exe", FALSE);
  PutBridge(lister);
}

// A file system of its own at a folder: "size=64k" or, with "bind,ro", the same folder once more.
void MountAt(const std::string& folder, const std::string& options) {
  const std::string place = UnixOf(folder);
  const bool done =
      options == "bind,ro"
          ? Shell("mount --bind \"$1\" \"$1\" && mount -o remount,ro,bind \"$1\"", place)
          : Shell("mount -t tmpfs -o " + options + " tmpfs \"$1\"", place);
  Must(done, "mount " + options + " at " + folder);
  mounted.push_back(place);
}

void FillTemp() { Shell("head -c 300000 /dev/zero >\"$1/filler\" 2>/dev/null", UnixOf(kTemp)); }

void AddSetting(const std::string& line) {
  const std::string ini = std::string(bench::kAppFolder) + "\\Pavoline.ini";
  bench::Write(ini, bench::Read(ini) + line + "\r\n");
}

using Word = std::function<void(Case&, const std::string&)>;

// "WORD ARGUMENT" of a setup. Anything else is "TOOL: LINE / LINE", lines of its file of faults.
const std::map<std::string, Word> kWords = {
    {"away", [](Case&, const std::string& path) { TakeAway(FullPath(path)); }},
    {"broken", [](Case&, const std::string& path) { BreakProgram(FullPath(path)); }},
    {"bridged-lister", [](Case&, const std::string&) { PutListerBehindBridge(); }},
    {"iso",
     [](Case& row, const std::string&) {
       row.source = "D:\\install.iso";
       Must(bench::Place("install.iso", row.source), "place the ISO");
     }},
    {"ghost",
     [](Case& row, const std::string&) {
       row.source = "D:\\Images\\small.gho";
       row.edition = 2;
       Must(bench::Place("small.gho", row.source) && bench::RunBench("ghost", {"10531"}),
            "place the Ghost image");
     }},
    {"meant", [](Case& row, const std::string&) { row.meantSo = true; }},
    {"drivers",
     [](Case& row, const std::string&) {
       row.drivers = true;
       bench::Write("D:\\Drivers\\a\\a.inf", "[Version]\r\n");
       bench::Write("D:\\Drivers\\b\\b.inf", "[Version]\r\n");
       AddSetting("AddDriver=1\r\nAddDriverFile=D:\\Drivers");
     }},
    {"plug-in",
     [](Case&, const std::string&) {
       bench::MakeFolder("D:\\Tools");
       PutBridge("D:\\Tools\\fix.exe");
       AddSetting("Plugin=1\r\nPluginFile=D:\\Tools\\fix.exe %ip% %bp%");
     }},
    {"restart",
     [](Case& row, const std::string&) {
       bench::WriteSettings("AutoRestart=1");  // the first word of its setup
       row.switches += " /reboot";
     }},
    {"repair", [](Case& row, const std::string&) { row.switches += " /bootrepair"; }},
    {"keep", [](Case& row, const std::string&) { row.switches += " keep"; }},
    {"virtual-disk", [](Case& row, const std::string&) { row.virtualDisk = true; }},
    {"temp",
     [](Case&, const std::string& how) {
       MountAt(kTemp, how == "read-only" ? "ro" : "size=256k");
       if (how == "full") FillTemp();
     }},
    {"program-read-only", [](Case&, const std::string&) { MountAt(bench::kAppFolder, "bind,ro"); }},
    {"long", [](Case&, const std::string&) {}},
    {"second-disk",
     [](Case&, const std::string&) { Must(bench::RunBench("second"), "add a disk"); }},
};

std::string Trimmed(const std::string& text) {
  const size_t from = text.find_first_not_of(' ');
  return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

void ApplyWord(Case& row, const std::string& word) {
  const size_t colon = word.find(": ");
  const size_t blank = word.find(' ');
  const std::string head = word.substr(0, std::min(colon, blank));
  if (head == "at") {
    row.events.push_back({word.substr(3, colon - 3), word.substr(colon + 2)});
  } else if (colon != std::string::npos) {
    std::string lines = word.substr(colon + 2);
    std::replace(lines.begin(), lines.end(), '/', '\n');
    bench::SetFaults(head, lines);
  } else {
    const auto found = kWords.find(head);
    Must(found != kWords.end(), "understand \"" + word + "\"");
    found->second(row, blank == std::string::npos ? "" : word.substr(blank + 1));
  }
}

}  // namespace

bool Shell(const std::string& script, const std::string& argument) {
  return bench::RunUnix(
             {"bash", "-c", "cd / && bench=$PAVOLINE_BENCH && " + script, "faults", argument}) == 0;
}

void Prepare(Case& row) {
  EndEverything();
  Must(bench::RunBench("reset"), "reset the bench");
  Shell("find \"$1\" -mindepth 1 -delete", UnixOf(kTemp));
  Must(bench::Write(kOldFile, "stays") && bench::Write(kStore, kOldMenu) &&
           bench::Write("D:\\letter.txt", "stays") &&
           bench::Place("small.wim", "D:\\Images\\small.wim"),
       "fill the drives");
  bench::WriteSettings("AutoRestart=0");
  std::istringstream words(row.setup);
  for (std::string word; std::getline(words, word, ';');) {
    if (!Trimmed(word).empty()) ApplyWord(row, Trimmed(word));
  }
}

void Act(const std::string& action) {
  if (action == "unplug") {
    Must(Shell("umount -l \"$bench/volumes/e\"; rm \"$bench/prefix/dosdevices/e:\""), "unplug");
    Must(bench::RunBench("letter", {"E", "none"}), "take the letter");
  } else if (action == "letter") {
    Must(bench::RunBench("letter", {"E", "other"}), "move the letter");
  } else if (action.starts_with("fault ")) {
    bench::SetFaults(action.substr(6, action.find(": ") - 6), action.substr(action.find(": ") + 2));
  } else if (action.starts_with("away ")) {
    TakeAway(FullPath(action.substr(5)));
  } else if (action.starts_with("break ")) {
    BreakProgram(FullPath(action.substr(6)));
  } else if (action == "full") {
    FillTemp();
  } else if (action.starts_with("end ")) {
    bench::EndProcesses(action.substr(4));
  } else {
    Must(false, "do \"" + action + "\"");
  }
}

void Clear() {
  EndEverything();
  for (const std::string& place : mounted) Shell("umount -l \"$1\"", place);
  mounted.clear();
  for (const auto& [path, away] : moved) {
    DeleteFileA(path.c_str());
    MoveFileA(away.c_str(), path.c_str());
  }
  moved.clear();
  Shell(
      "source \"$bench/tools/volume.sh\"; while mountpoint -q \"$bench/volumes/e\"; do "
      "umount -l \"$bench/volumes/e\"; done; volume_settle e; volume_mount e");
}

void EndEverything() {
  bench::EndProcesses("Pavoline.exe");
  bench::EndProcesses("cmd.exe");
  for (const char* tool : kTools) bench::EndProcesses(tool);
}

}  // namespace faults
