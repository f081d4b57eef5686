#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "install/installation.h"
#include "support/workshop.h"

namespace pavoline::testing {

// A machine whose tools answer: the image D:\SOURCES\INSTALL.WIM with the editions "Home" and
// "Pro", an EFI partition S:, install candidates D: and E: ("My Disk"), a system for E: in the
// image.
struct InstallShop : Workshop {
  InstallShop();

  Plan plan;                             // confirmed: "Pro" to E:, formatted, boot files on S:
  std::string partitionLines;            // what the partition lister prints
  std::string version = "10.0.19045.1";  // of the system in the image

  // Begins with the plan; a timer ticks for what runs.
  void begin() { BeginInstallation(session, plan); }
  int install();  // to the end; the exit code

  void applied(const std::string& drive = "E:");  // the system is there

  // What ran besides the lister, the program's own boot tools without their folder.
  std::vector<std::string> commands() const;
  const std::string kBootTools = "X:\\Pavoline\\Bin\\Boot\\x64\\";
};

// The whole program on that machine, with the main window's own session.
struct Installer : InstallShop {
  Installer();

  // Starts the program with these switches and lets the start-up tick pass.
  Session& start(std::vector<std::string> switches = {});
  // As a person: source, second edition, partitions S: and E:.
  void fillIn();
  void pressStart() { form.command1[kStart].press(); }
  // Starts without a person, some words left out, and waits for the program's end: the exit code.
  int unattended(std::vector<std::string> more, const std::string& without = "");

  Session& running() { return program->session(); }
  bool idle() { return running().activity == Activity::kIdle && form.combo1.enabled(); }
  long count(const std::string& partOfMessage) const;

  std::unique_ptr<Program> program;
};

}  // namespace pavoline::testing
