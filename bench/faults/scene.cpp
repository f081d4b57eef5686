#include "faults/scene.h"

#include <windows.h>

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

#include "bridge/unix_side.h"
#include "driver/bench_run.h"
#include "driver/drive_files.h"
#include "driver/process.h"
#include "driver/window.h"

namespace faults {
namespace {

constexpr char kOldFile[] = "E:\\letter.txt";
constexpr char kOldMenu[] = "the old menu";
constexpr char kStore[] = "S:\\Boot\\BCD";
const char* const kTools[] = {"wimlib-imagex.exe", "ghost.exe",    "dism.exe",     "format.com",
                              "bcdboot.exe",       "bootsect.exe", "diskpart.exe", "imdisk.exe",
                              "shutdown.exe",      "CxDir.exe",    "fix.exe"};

std::vector<std::pair<std::string, std::string>> moved;  // where it belongs, where it is
std::vector<std::string> mounted;                        // Unix folders

void must(bool done, const std::string& what) {
  if (!done) throw std::runtime_error("could not " + what);
}

bool shell(const std::string& script, const std::string& argument = "") {
  return bench::runUnix(
             {"bash", "-c", "cd / && bench=$PAVOLINE_BENCH && " + script, "faults", argument}) == 0;
}

std::string unixOf(const std::string& path) { return bench::unixPath(bench::fromUtf8(path)); }

// "bin\x" and "sys\x" are the program's tools and the system's.
std::string fullPath(const std::string& path) {
  const std::string rest = path.substr(path.find('\\') + 1);
  if (path.starts_with("bin\\")) return std::string(bench::kAppFolder) + "\\Bin\\" + rest;
  if (path.starts_with("sys\\")) return "C:\\windows\\system32\\" + rest;
  return path;
}

void takeAway(const std::string& path) {
  const std::string away = path + ".away";
  must(MoveFileA(path.c_str(), away.c_str()), "take away " + path);
  moved.emplace_back(path, away);
}

// A file of the name that no system can run.
void breakProgram(const std::string& path) {
  takeAway(path);
  must(bench::write(path, "MZ, and nothing that could be run"), "break " + path);
}

void putBridge(const std::string& path) {
  must(shell("cp \"$bench/bridge.exe\" \"$1\"", unixOf(path)), "put the bridge at " + path);
}

// The script runs the real lister, which stands elsewhere meanwhile.
void putListerBehindBridge() {
  const std::string lister = fullPath("bin\\CxDir\\x64\\CxDir.exe");
  CopyFileA(lister.c_str(), "C:\\lister.exe", FALSE);
  putBridge(lister);
}

// A file system of its own at a folder: "size=64k" or, with "bind,ro", the same folder once more.
void mountAt(const std::string& folder, const std::string& options) {
  const std::string place = unixOf(folder);
  const bool done =
      options == "bind,ro"
          ? shell("mount --bind \"$1\" \"$1\" && mount -o remount,ro,bind \"$1\"", place)
          : shell("mount -t tmpfs -o " + options + " tmpfs \"$1\"", place);
  must(done, "mount " + options + " at " + folder);
  mounted.push_back(place);
}

void fillTemp() { shell("head -c 300000 /dev/zero >\"$1/filler\" 2>/dev/null", unixOf(kTemp)); }

void addSetting(const std::string& line) {
  const std::string ini = std::string(bench::kAppFolder) + "\\Pavoline.ini";
  bench::write(ini, bench::read(ini) + line + "\r\n");
}

using Word = std::function<void(Case&, const std::string&)>;

// "WORD ARGUMENT" of a setup. Anything else is "TOOL: LINE / LINE", lines of its file of faults.
const std::map<std::string, Word> kWords = {
    {"away", [](Case&, const std::string& path) { takeAway(fullPath(path)); }},
    {"broken", [](Case&, const std::string& path) { breakProgram(fullPath(path)); }},
    {"bridged-lister", [](Case&, const std::string&) { putListerBehindBridge(); }},
    {"iso",
     [](Case& row, const std::string&) {
       row.source = "D:\\install.iso";
       must(bench::place("install.iso", row.source), "place the ISO");
     }},
    {"ghost",
     [](Case& row, const std::string&) {
       row.source = "D:\\Images\\small.gho";
       row.edition = 2;
       must(bench::place("small.gho", row.source) && bench::runBench("ghost", {"10531"}),
            "place the Ghost image");
     }},
    {"meant", [](Case& row, const std::string&) { row.meantSo = true; }},
    {"drivers",
     [](Case& row, const std::string&) {
       row.drivers = true;
       bench::write("D:\\Drivers\\a\\a.inf", "[Version]\r\n");
       bench::write("D:\\Drivers\\b\\b.inf", "[Version]\r\n");
       addSetting("AddDriver=1\r\nAddDriverFile=D:\\Drivers");
     }},
    {"plug-in",
     [](Case&, const std::string&) {
       bench::makeFolder("D:\\Tools");
       putBridge("D:\\Tools\\fix.exe");
       addSetting("Plugin=1\r\nPluginFile=D:\\Tools\\fix.exe %ip% %bp%");
     }},
    {"restart",
     [](Case& row, const std::string&) {
       bench::writeSettings("AutoRestart=1");  // the first word of its setup
       row.switches += " /reboot";
     }},
    {"repair", [](Case& row, const std::string&) { row.switches += " /bootrepair"; }},
    {"keep", [](Case& row, const std::string&) { row.switches += " keep"; }},
    {"virtual-disk", [](Case& row, const std::string&) { row.virtualDisk = true; }},
    {"temp",
     [](Case&, const std::string& how) {
       mountAt(kTemp, how == "read-only" ? "ro" : "size=256k");
       if (how == "full") fillTemp();
     }},
    {"program-read-only", [](Case&, const std::string&) { mountAt(bench::kAppFolder, "bind,ro"); }},
    {"long", [](Case&, const std::string&) {}},
    {"second-disk",
     [](Case&, const std::string&) { must(bench::runBench("second"), "add a disk"); }},
};

std::string trimmed(const std::string& text) {
  const size_t from = text.find_first_not_of(' ');
  return from == std::string::npos ? "" : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

void applyWord(Case& row, const std::string& word) {
  const size_t colon = word.find(": ");
  const size_t blank = word.find(' ');
  const std::string head = word.substr(0, std::min(colon, blank));
  if (head == "at") {
    row.events.push_back({word.substr(3, colon - 3), word.substr(colon + 2)});
  } else if (colon != std::string::npos) {
    std::string lines = word.substr(colon + 2);
    std::replace(lines.begin(), lines.end(), '/', '\n');
    bench::setFaults(head, lines);
  } else {
    const auto found = kWords.find(head);
    must(found != kWords.end(), "understand \"" + word + "\"");
    found->second(row, blank == std::string::npos ? "" : word.substr(blank + 1));
  }
}

std::set<std::string> filesIn(const std::string& folder) {
  std::set<std::string> names;
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(bench::fromUtf8(folder + "*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    std::string name = bench::toUtf8(found.cFileName);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return isdigit(c); }, '#');
    // A list that is just being made stays when the program ends.
    const bool passing = name == "Pavoline.log" || name == "GetPart.log";
    if (name[0] != '.' && !passing) names.insert(name);
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return names;
}

std::string onTarget(int edition) {
  if (!bench::exists("E:\\")) return "gone";
  const bool old = bench::exists(kOldFile);
  const bool begun = bench::exists("E:\\Windows") || bench::exists("E:\\Program Files");
  if (systemComplete(edition)) return old ? "the system among the old files" : "the system";
  if (begun) return old ? "part of the system among the old files" : "part of the system";
  return old ? "old files" : "empty";
}

std::string menu() {
  if (menuNew()) return "new menu";
  if (bench::read(kStore) == kOldMenu) return "old menu";
  return bench::exists(std::string(kStore) + ".before") ? "old menu set aside" : "no menu";
}

std::string joined(const std::set<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

std::set<std::string> toolsRunning() {
  std::set<std::string> running;
  for (const char* tool : kTools) {
    if (bench::isRunning(tool)) running.insert(tool);
  }
  return running;
}

}  // namespace

void prepare(Case& row) {
  endEverything();
  must(bench::runBench("reset"), "reset the bench");
  shell("find \"$1\" -mindepth 1 -delete", unixOf(kTemp));
  must(bench::write(kOldFile, "stays") && bench::write(kStore, kOldMenu) &&
           bench::write("D:\\letter.txt", "stays") &&
           bench::place("small.wim", "D:\\Images\\small.wim"),
       "fill the drives");
  bench::writeSettings("AutoRestart=0");
  std::istringstream words(row.setup);
  for (std::string word; std::getline(words, word, ';');) {
    if (!trimmed(word).empty()) applyWord(row, trimmed(word));
  }
}

void act(const std::string& action) {
  if (action == "unplug") {
    must(shell("umount -l \"$bench/volumes/e\"; rm \"$bench/prefix/dosdevices/e:\""), "unplug");
    must(bench::runBench("letter", {"E", "none"}), "take the letter");
  } else if (action == "letter") {
    must(bench::runBench("letter", {"E", "other"}), "move the letter");
  } else if (action.starts_with("fault ")) {
    bench::setFaults(action.substr(6, action.find(": ") - 6), action.substr(action.find(": ") + 2));
  } else if (action.starts_with("away ")) {
    takeAway(fullPath(action.substr(5)));
  } else if (action.starts_with("break ")) {
    breakProgram(fullPath(action.substr(6)));
  } else if (action == "full") {
    fillTemp();
  } else if (action.starts_with("end ")) {
    bench::endProcesses(action.substr(4));
  } else {
    must(false, "do \"" + action + "\"");
  }
}

void clear() {
  endEverything();
  for (const std::string& place : mounted) shell("umount -l \"$1\"", place);
  mounted.clear();
  for (const auto& [path, away] : moved) {
    DeleteFileA(path.c_str());
    MoveFileA(away.c_str(), path.c_str());
  }
  moved.clear();
  shell(
      "source \"$bench/tools/volume.sh\"; while mountpoint -q \"$bench/volumes/e\"; do "
      "umount -l \"$bench/volumes/e\"; done; volume_settle e; volume_mount e");
}

void endEverything() {
  bench::endProcesses("Pavoline.exe");
  bench::endProcesses("cmd.exe");
  for (const char* tool : kTools) bench::endProcesses(tool);
}

std::string leftBehind(int edition) {
  // What is started without being waited for takes a while; a file that a program still held goes
  // with its last handle.
  constexpr ULONGLONG kLongest = 20000;
  const auto settled = [] {
    const bool begins = bench::isRunning("cmd.exe") && toolsRunning().empty();
    return !begins && !bench::isRunning("imdisk.exe") && !bench::isRunning("shutdown.exe") &&
           !filesIn(kTemp).contains("tool#.err");
  };
  bench::waitUntil(kLongest, settled);
  std::string text = "E: " + onTarget(edition) + "; S: " + menu();
  if (const auto files = filesIn(kTemp); !files.empty()) text += "; temp: " + joined(files);
  if (const auto running = toolsRunning(); !running.empty()) {
    text += "; runs on: " + joined(running);
  }
  std::string drives;
  for (char letter = 'F'; letter <= 'Z'; ++letter) {
    if (letter != 'S' && bench::exists({letter, ':', '\\'})) drives += letter;
  }
  if (!drives.empty()) text += "; another drive " + drives + ":";
  if (shell("[[ -f $bench/restart ]]")) text += "; restart";
  return text;
}

bool systemComplete(int edition) {
  const bool old = DeleteFileA(kOldFile);
  const bool complete = bench::holdsSystem(edition, 'E');
  if (old) bench::write(kOldFile, "stays");
  return complete;
}

bool menuNew() { return bench::read(kStore).find("windows=E:\\Windows") != std::string::npos; }

bool driversIn() {
  return shell(
      "(($(find \"$bench/volumes/e/Windows/System32/DriverStore\" -name '[ab].inf' | wc -l) == "
      "2))");
}

bool otherDrivesWhole() { return bench::read("D:\\letter.txt") == "stays"; }

std::string recorded() {
  std::string last;
  const std::string log = "Pavoline.log";
  std::istringstream lines(bench::read(kTemp + log) +
                           bench::read(std::string(bench::kAppFolder) + "\\" + log));
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
