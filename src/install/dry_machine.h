#pragma once

#include <functional>
#include <string>

#include "install/dry_files.h"
#include "platform/dialogs.h"
#include "platform/drives.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/taskbar.h"
#include "platform/text_services.h"
#include "session/plan.h"

namespace pavoline {

// One thing that an installation would do.
struct PlannedAct {
  bool command = true;  // else the program itself copies, renames or writes a file
  std::string text;     // the command line as it would be started or stand in a batch file
  std::string toldAs;   // in its place for a person and the record; empty: itself
};

// What the programs leave behind that are not started, as far as later steps ask for it.
struct AssumedWork {
  Plan plan;
  std::string partitionList;  // printed by the lister
  std::string version;        // of the system in the image
};

class DryProcesses : public Processes {
 public:
  DryProcesses(DryFiles& files, TextServices& text, AssumedWork work,
               std::function<void(PlannedAct)> tell)
      : files_(files), text_(text), work_(std::move(work)), tell_(std::move(tell)) {}

  // Tells the command line, or the lines of a batch file that was written for it.
  std::unique_ptr<StartedProgram> start(const StartRequest& request) override;
  std::vector<RunningProcess> list() override { return {}; }
  void terminate(std::uint32_t) override {}
  void handleEvents() override {}
  void handleEventsFor(long) override {}

 private:
  void assume(const std::string& line);

  DryFiles& files_;
  TextServices& text_;
  AssumedWork work_;
  std::function<void(PlannedAct)> tell_;
};

// Letters stay where they are.
class DryDrives : public Drives {
 public:
  explicit DryDrives(Drives& real) : real_(real) {}
  int type(const std::string& drive) override { return real_.type(drive); }
  std::optional<std::uint64_t> freeBytes(const std::string& drive) override {
    return real_.freeBytes(drive);
  }
  std::vector<std::optional<std::uint64_t>> freeBytesSoon(const std::vector<std::string>& drives,
                                                          int milliseconds) override {
    return real_.freeBytesSoon(drives, milliseconds);
  }
  std::optional<VolumePosition> position(const std::string& drive) override {
    return real_.position(drive);
  }
  VolumeFacts facts(const std::string& drive) override { return real_.facts(drive); }
  bool assignLetter(const VolumePosition&, const std::string&) override { return true; }
  bool removeLetter(const std::string&) override { return true; }

 private:
  Drives& real_;
};

// Nothing is shown; questions are answered with OK.
class DryDialogs : public Dialogs {
 public:
  Answer message(const std::string&, MessageKind, const std::string&, const MessageLimit&,
                 const MessageButton&) override {
    return kAnswerOk;
  }
  std::string openFile(const FileRequest&) override { return {}; }
  std::string saveFile(const FileRequest&) override { return {}; }
  std::string chooseFolder(const std::string&, const std::string&) override { return {}; }
  int chooseFromMenu(const Form&, const Control&, const std::vector<MenuItem>&) override {
    return 0;
  }
  void showModal(Form&) override {}
  bool openDocument(const std::string&) override { return false; }
};

class DryTaskbar : public Taskbar {
 public:
  bool create() override { return false; }
  void setProgressValue(int, int) override {}
  void setProgressState(TaskbarState) override {}
};

// A machine on which the steps of an installation run as on the real one and change nothing. Each
// program is told, and taken to have ended well at once.
class DryMachine {
 public:
  DryMachine(Platform& real, const std::string& tempFolder, AssumedWork work,
             std::function<void(PlannedAct)> tell);

  Platform& platform() { return platform_; }

 private:
  DryFiles files_;
  DryProcesses processes_;
  DryDrives drives_;
  DryDialogs dialogs_;
  DryTaskbar taskbar_;
  Platform platform_;
};

}  // namespace pavoline
