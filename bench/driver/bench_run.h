#pragma once

#include <string>
#include <vector>

// The run of the bench that a test stands in: its journal, its tools' faults, its volumes. Folders
// and files of the drives are reached with the ordinary file functions (D: source, S: boot,
// E: install).
namespace bench {

// One call of a tool, as the journal tells it.
struct Call {
  std::string tool;       // "format", "wimlib-imagex", "ghost", a companion's file name
  std::string arguments;  // as written by the caller
  std::string result;     // exit code, or "killed"
  std::string note;       // begins with ERROR when the real tool would have refused

  bool refused() const { return note.rfind("ERROR", 0) == 0; }
};

std::vector<Call> JournalCalls();
std::vector<Call> CallsOf(const std::string& tool);

// Lines of what the tool shall do wrong: "fail 1", "die 40", "pace 50", "wait 2", "hang".
void SetFaults(const std::string& tool, const std::string& lines);

// Runs "bench VERB <this run> ARGUMENT..." below Wine: "reset"; "source" MB KIND PATH; "ghost"
// BUILD. True when it went well. Takes seconds where an image has to be made first.
bool RunBench(const std::string& verb, const std::vector<std::string>& arguments = {});

// A screenshot of the whole display, as a PNG file in the run's folder shots/.
bool TakeShot(const std::string& name);

// Places a program that records its start in the journal, under a path of the drives.
bool PlaceCompanion(const std::string& windowsPath);

}  // namespace bench
