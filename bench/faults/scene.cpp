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

void must(bool done, const std::string& what) {
  if (!done) throw std::runtime_error("could not " + what);
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

}  // namespace

bool shell(const std::string& script, const std::string& argument) {
  return bench::runUnix(
             {"bash", "-c", "cd / && bench=$PAVOLINE_BENCH && " + script, "faults", argument}) == 0;
}

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

}  // namespace faults
