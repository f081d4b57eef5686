#pragma once

#include <string>

#include "session/session.h"

namespace pavoline {

// One run of the program: owns what it knows and connects the main window's controls with the
// steps they start. Phases: load, the deferred start-up tick, idle, installing.
class Program {
 public:
  Program(Platform& platform, Form1& form);

  // Everything before the window appears. False: a message was shown, end the process at once.
  bool load();

  // An error that nobody expected: told, noted, and the end of the program.
  void fault(const std::string& what);

  // What the process returns.
  int exitCode() const { return static_cast<int>(session_.exitCode); }

  Session& session() { return session_; }

 private:
  void connect();

  Session session_;
};

}  // namespace pavoline
