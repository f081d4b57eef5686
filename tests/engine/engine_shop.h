#pragma once

#include <string>
#include <vector>

#include "engine/apply_monitor.h"
#include "engine/ghost_restore.h"
#include "run/taskbar_progress.h"
#include "form/control_status.h"
#include "postinstall/driver_injection.h"
#include "support/workshop.h"

namespace pavoline::testing {

// A machine on which Start has just been confirmed: image D:\SOURCES\INSTALL.WIM, second edition,
// to E: with the boot files on S:, the engine's timers connected.
struct EngineShop : Workshop {
  EngineShop() {
    files.put("D:\\SOURCES\\INSTALL.WIM", std::string(1000, 'i'));
    files.put("E:\\old.txt");
    drives.add("S:");
    for (const char* name : {"bcdboot.exe", "bootsect.exe"}) files.put(kBootTools + name);
    form.combo1.setText("D:\\SOURCES\\INSTALL.WIM");
    for (const char* line : {"Home", "Pro"}) form.combo[kEditions].addItem(line);
    form.combo[kEditions].select(1);
    form.text[kInstallPartition].setText("E:");
    form.text[kBootPartition].setText("S:");
    session.target = {"2:1", "My Disk"};
    CreateTaskbarProgress(session);
    form.timer1.onTick = [this] { ApplyMonitorTick(session); };
    form.timer2.onTick = [this] { GhostTick(session); };
    form.timer3.onTick = [this] { DriverMonitorTick(session); };
    processes.onStart("format.com",
                      [this](ToolRun& run) { run.does(4000, [this] { drives.wipe("E:"); }); });
    ControlStatus(form, session.texts, false);
  }

  // The image has been written: a system of this version is on E:.
  void applied(const std::string& version) {
    files.version("E:\\Windows\\System32\\kernel32.dll", version);
    files.folder("E:\\Windows\\SysWOW64");
  }

  // The window is closed while a tool runs, which goes on for a while.
  void closeDuring(const std::string& tool) {
    processes.onStart(tool, [this](ToolRun& run) {
      run.does(100, [this] { form.unload(); });
      run.endsAt(5000);
    });
  }

  // What was started, the boot tools without their folder.
  std::vector<std::string> commands() const {
    std::vector<std::string> result;
    for (const auto& start : processes.started) {
      const bool bootTool = start.command.starts_with(kBootTools);
      result.push_back(bootTool ? start.command.substr(kBootTools.size()) : start.command);
    }
    return result;
  }

  const std::string kBootTools = "X:\\Pavoline\\Bin\\Boot\\x64\\";
};

}  // namespace pavoline::testing
