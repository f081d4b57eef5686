#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "support/workshop.h"

namespace pavoline::testing {

// The whole program on a machine whose tools answer: two editions in D:\images\win10.wim, an EFI
// partition S:, install candidates D: and E:.
struct Installer : Workshop {
  Installer();

  // Starts the program with these switches and lets the start-up tick pass.
  Session& start(std::vector<std::string> switches = {});

  // Fills the window as a person would: source, second edition, partitions S: and E:.
  void fillIn();
  void pressStart() { form.command1[kStart].press(); }

  bool idle() const { return !form.busy && form.combo1.enabled(); }
  long count(const std::string& partOfMessage) const;
  std::string journal() { return files.text("C:\\Windows\\temp\\Pavoline.log"); }

  std::unique_ptr<Program> program;
  int extractionMs = 20000;    // how long the apply takes
  bool toolDies = false;       // the imaging program vanishes at half of the extraction
  std::string partitionLines;  // what the partition lister prints
};

}  // namespace pavoline::testing
