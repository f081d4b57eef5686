#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/drives.h"
#include "platform/environment.h"
#include "platform/foreign_windows.h"
#include "platform/taskbar.h"
#include "support/fake_files.h"
#include "support/fake_text.h"
#include "support/simulated_time.h"

namespace pavoline::testing {

struct FakeEnvironment : Environment {
  explicit FakeEnvironment(SimulatedTime& time) : time_(time) {}

  std::map<std::string, std::string> variables;  // names in lower case
  std::vector<std::string> commandLine = {"X:\\Pavoline\\Pavoline.exe"};
  bool is64Bit = false;
  Firmware startedBy = Firmware::kUnknown;
  unsigned thread = 1033, unknownLocale = 0;
  std::deque<double> randoms;  // the next numbers; 0.5 when none is left
  int reseeds = 0;
  ScreenRoom screen{28800, 16200};  // 1920x1080 at 96 dpi
  std::string printed;              // on standard output
  std::string firmwareBytes, network;

  std::string variable(const std::string& name) override { return variables[Lower(name)]; }
  void setVariable(const std::string& name, const std::string& value) override {
    variables[Lower(name)] = value;
  }
  std::vector<std::string> arguments() override { return commandLine; }
  std::string programFolder() override { return "X:\\Pavoline"; }
  bool is64BitProcess() override { return is64Bit; }
  bool print(const std::string& text) override {
    printed += text;
    return true;
  }
  std::string firmwareTable() override { return firmwareBytes; }
  std::string networkAddress() override { return network; }
  Firmware firmware() override { return startedBy; }
  unsigned systemLocale() override { return 1033; }
  unsigned setThreadLocale(unsigned locale) override {
    return locale == unknownLocale ? thread : thread = locale;
  }
  bool fontExists(const std::string& name) override { return name == "Tahoma"; }
  ScreenRoom screenRoom() override { return screen; }
  LocalTime now() override;  // 2024-05-06 00:00:00 and the simulated time
  std::uint64_t milliseconds() override { return static_cast<std::uint64_t>(time_.now()); }
  void reseedRandom() override { ++reseeds; }
  double random() override;

 private:
  SimulatedTime& time_;
};

// The answer of a firmware that has these names, behind a structure of another kind.
std::string FirmwareTable(const std::string& serial, const std::string& model);

struct FakeDrives : Drives {
  explicit FakeDrives(FakeFiles& files) : files_(files) {}

  // Adds a drive "D:" with an empty root, or gives one that is there other facts.
  void add(const std::string& drive, int type = kDriveFixed,
           std::optional<VolumePosition> position = {}, std::uint64_t free = 100ull << 30);
  void remove(const std::string& drive) {  // with everything on it
    files_.drop(drive);
    drives_.erase(Upper(drive));
  }
  void wipe(const std::string& drive);  // as formatting does: empty, with another serial number
  // Else name and serial number come from the letter, disk and offset from the position.
  void setFacts(const std::string& drive, const VolumeFacts& facts) {
    drives_[Upper(drive)].volume = facts;
  }

  std::vector<VolumePosition> letterless;  // volumes that no letter leads to
  std::vector<std::string> letterCalls;    // "assign Z: 1 2", "remove Z:", also those refused
  bool refusesLetters = false;
  std::set<std::string> slow;  // drives that do not answer in time

  int type(const std::string& drive) override { return find(drive).type; }
  std::optional<std::uint64_t> freeBytes(const std::string& drive) override {
    return find(drive).free;
  }
  std::vector<std::optional<std::uint64_t>> freeBytesSoon(const std::vector<std::string>& drives,
                                                          int) override {
    std::vector<std::optional<std::uint64_t>> result;
    for (const std::string& drive : drives) {
      result.push_back(slow.contains(drive) ? std::nullopt : freeBytes(drive));
    }
    return result;
  }
  std::optional<VolumePosition> position(const std::string& drive) override {
    return find(drive).position;
  }
  VolumeFacts facts(const std::string& drive) override { return find(drive).volume; }
  bool assignLetter(const VolumePosition& position, const std::string& drive) override;
  bool removeLetter(const std::string& drive) override;

 private:
  struct Facts {
    int type = kDriveNoRoot;
    std::optional<VolumePosition> position;
    std::optional<std::uint64_t> free;
    VolumeFacts volume;
  };
  const Facts& find(const std::string& drive) const;

  FakeFiles& files_;
  std::map<std::string, Facts> drives_;  // by letter
};

struct FakeForeignWindows : ForeignWindows {
  struct Window {
    std::string className, title;
    std::uint32_t process = 0;
    bool open = true, hidden = false, minimized = false;
  };
  std::vector<Window> all;  // a window's handle is its place + 1

  ForeignWindow open(const std::string& className, const std::string& title,
                     std::uint32_t process = 0) {
    all.push_back({className, title, process});
    return all.size();
  }
  Window& at(ForeignWindow window) { return all.at(window - 1); }

  std::vector<ForeignWindow> listByClass(const std::string& className) override {
    return find(&Window::className, className);
  }
  ForeignWindow findByTitle(const std::string& title) override {
    const auto found = find(&Window::title, title);
    return found.empty() ? 0 : found.front();
  }
  bool exists(ForeignWindow window) override { return isOpen(window); }
  std::uint32_t processOf(ForeignWindow window) override {
    return isOpen(window) ? at(window).process : 0;
  }
  std::string title(ForeignWindow window) override {
    return isOpen(window) ? at(window).title : std::string();
  }
  void hide(ForeignWindow window) override {
    if (isOpen(window)) at(window).hidden = true;
  }
  void minimize(ForeignWindow window) override {
    if (isOpen(window)) at(window).minimized = true;
  }

 private:
  bool isOpen(ForeignWindow window) const {
    return window > 0 && window <= all.size() && all[window - 1].open;
  }
  std::vector<ForeignWindow> find(std::string Window::*field, const std::string& value);
};

struct FakeTaskbar : Taskbar {
  bool created = false;
  std::vector<int> values;  // percent of the total
  std::vector<TaskbarState> states;
  bool shown = false;  // a value brings the bar back

  bool create() override { return created = true; }
  void setProgressValue(int completed, int total) override {
    if (created && total > 0) values.push_back(completed * 100 / total);
    shown = created;
  }
  void setProgressState(TaskbarState state) override {
    if (created) states.push_back(state);
    shown = created && state != TaskbarState::kNone;
  }
};

}  // namespace pavoline::testing
