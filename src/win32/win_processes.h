#pragma once

#include "platform/processes.h"

namespace pavoline {

class MessageLoop;

class WinProcesses : public Processes {
 public:
  explicit WinProcesses(MessageLoop& loop) : loop_(loop) {}

  std::unique_ptr<StartedProgram> start(const StartRequest& request) override;
  std::vector<RunningProcess> list() override;
  void terminate(std::uint32_t id) override;
  void handleEvents() override;
  void handleEventsFor(long milliseconds) override;

 private:
  MessageLoop& loop_;
};

}  // namespace pavoline
