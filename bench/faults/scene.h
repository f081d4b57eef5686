#pragma once

#include <string>
#include <vector>

// What stands on the bench when a fault is tried, and what goes wrong there.
namespace faults {

inline constexpr char kTemp[] = "C:\\windows\\temp\\";

// What every scene begins with.
inline constexpr char kOldFile[] = "E:\\letter.txt";
inline constexpr char kOldMenu[] = "the old menu";
inline constexpr char kStore[] = "S:\\Boot\\BCD";

inline constexpr const char* kTools[] = {
    "wimlib-imagex.exe", "ghost.exe",  "dism.exe",     "format.com", "bcdboot.exe", "bootsect.exe",
    "diskpart.exe",      "imdisk.exe", "shutdown.exe", "CxDir.exe",  "fix.exe"};

// Something that happens while the program works.
struct Event {
  std::string when;    // "question", "40%", or a tool that has run for some seconds: "dism.exe"
  std::string action;  // a word of Act()
  bool done = false;
};

// One row of the table. The setup's words, separated by semicolons, stand in scene.cpp.
struct Case {
  std::string part, name, setup;
  bool attended = true;

  int edition = 1;  // which the image holds first
  std::string source = "D:\\Images\\small.wim";
  std::string switches;  // of the unattended run, besides those that every one has
  std::vector<Event> events;
  bool virtualDisk = false;  // a disk is created instead of an installation
  bool drivers = false;      // are wanted
  bool meantSo = false;      // what is incomplete counts as done, see elsewhere.md
};

// Makes the scene; throws std::runtime_error with what could not be made.
void Prepare(Case& row);
// "unplug", "letter", "full", "end TOOL": what an event does besides the window's own.
void Act(const std::string& action);
// Gives everything back that Prepare() and Act() have taken away.
void Clear();
// Ends the program and every tool, as a power cut does.
void EndEverything();

// A script of the Unix side, which finds the run's folder in $bench and its argument in $1.
bool Shell(const std::string& script, const std::string& argument = "");

}  // namespace faults
