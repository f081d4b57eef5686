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
#include "support/fold_case.h"
#include "support/simulated_time.h"

namespace pavoline::testing {

struct FakeEnvironment : Environment {
  explicit FakeEnvironment(SimulatedTime& time) : time_(time) {}

  std::map<std::string, std::string> variables;  // names in lower case
  std::vector<std::string> commandLine = {"X:\\Pavoline\\Pavoline.exe"};
  std::string folder = "X:\\Pavoline";
  bool is64Bit = false;
  unsigned system = 1033, thread = 1033;
  std::set<std::string> fonts = {"Segoe UI", "Tahoma"};
  std::deque<double> randoms;  // the next numbers; 0.5 when none is left
  int reseeds = 0;

  std::string variable(const std::string& name) override;
  std::vector<std::string> arguments() override { return commandLine; }
  std::string programFolder() override { return folder; }
  bool is64BitProcess() override { return is64Bit; }
  unsigned systemLocale() override { return system; }
  unsigned threadLocale() override { return thread; }
  void setThreadLocale(unsigned locale) override { thread = locale; }
  bool fontExists(const std::string& name) override { return fonts.contains(name); }
  LocalTime now() override;  // 2024-05-06 00:00:00 and the simulated time
  void reseedRandom() override { ++reseeds; }
  double random() override;

 private:
  SimulatedTime& time_;
};

struct FakeDrives : Drives {
  explicit FakeDrives(FakeFiles& files) : files_(files) {}

  // Adds a drive "D:" with an empty root, or gives one that is there other facts.
  void add(const std::string& drive, int type = kDriveFixed,
           std::optional<VolumePosition> position = {}, std::uint64_t free = 100ull << 30);
  void remove(const std::string& drive) {  // with everything on it
    files_.drop(drive);
    drives_.erase(Upper(drive));
  }
  void wipe(const std::string& drive) {  // as formatting does
    files_.drop(drive);
    files_.folder(drive + "\\");
  }

  int type(const std::string& drive) override {
    const Facts* facts = find(drive);
    return facts ? facts->type : kDriveNoRoot;
  }
  std::optional<std::uint64_t> freeBytes(const std::string& drive) override {
    const Facts* facts = find(drive);
    return facts ? std::optional(facts->free) : std::nullopt;
  }
  std::optional<VolumePosition> position(const std::string& drive) override {
    const Facts* facts = find(drive);
    return facts ? facts->position : std::nullopt;
  }

 private:
  struct Facts {
    int type = kDriveFixed;
    std::optional<VolumePosition> position;
    std::uint64_t free = 0;
  };
  const Facts* find(const std::string& drive) const;

  FakeFiles& files_;
  std::map<std::string, Facts> drives_;
};

struct FakeForeignWindows : ForeignWindows {
  struct Window {
    std::string className, title;
    bool open = true, hidden = false, minimized = false;
  };
  std::vector<Window> all;  // a window's handle is its place + 1

  ForeignWindow open(const std::string& className, const std::string& title) {
    all.push_back({className, title});
    return all.size();
  }
  Window& at(ForeignWindow window) { return all.at(window - 1); }

  ForeignWindow findByClass(const std::string& className) override {
    return find(&Window::className, className);
  }
  ForeignWindow findByTitle(const std::string& title) override {
    return find(&Window::title, title);
  }
  std::string title(ForeignWindow window) override;
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
  ForeignWindow find(std::string Window::*field, const std::string& value);
};

struct FakeTaskbar : Taskbar {
  bool available = true;  // what `create` answers
  bool created = false;
  std::vector<int> values;  // percent of the total
  std::vector<TaskbarState> states;

  bool create() override { return created = available; }
  void setProgressValue(int completed, int total) override {
    if (created && total > 0) values.push_back(completed * 100 / total);
  }
  void setProgressState(TaskbarState state) override {
    if (created) states.push_back(state);
  }
};

}  // namespace pavoline::testing
