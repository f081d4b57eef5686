#pragma once

#include <string>
#include <vector>

#include "driver/main_window.h"
#include "driver/process.h"
#include "form/text_numbers.h"

namespace e2e {

// Somebody at the machine who starts the installer and works with its windows.
class Person {
 public:
  // Starts the program and waits until its partitions are listed.
  explicit Person(const std::string& switches = "");
  ~Person();  // ends it

  bench::MainWindow main;

  bool idle() const;
  bool busy() const;
  // Idle, and no message waits to be answered.
  bool leftInPeace() const;
  bool gone(int milliseconds) const;                  // the process has ended
  int exitCode(int milliseconds = 2 * 60'000) const;  // -1 when it has not ended by then

  // Puts a path into the source box and waits for its editions; false when none come.
  bool opensImage(const std::string& path) const;
  void entersPartitions(const std::string& install, const std::string& boot) const;
  // Presses Start and answers OK to the question that follows.
  void startsAndConfirms() const;
  bool seesProgress(int percent) const;

  // The text of the message shown next, its line breaks as blanks, once it was answered.
  std::string hears(int button = IDOK) const;

  // Waits for one of the small windows ("PartitionChooser").
  bench::Window sees(const std::string& form) const;
  void presses(const bench::Window& window, const std::string& button) const;

  const bench::Process& process() const { return process_; }

 private:
  bench::Process process_;
};

}  // namespace e2e
