#pragma once

#include <cstdint>

#include "platform/environment.h"

namespace pavoline {

class WinEnvironment : public Environment {
 public:
  std::string variable(const std::string& name) override;
  void setVariable(const std::string& name, const std::string& value) override;
  std::vector<std::string> arguments() override;
  std::string programFolder() override;
  bool is64BitProcess() override;
  bool print(const std::string& text) override;
  std::string firmwareTable() override;
  std::string networkAddress() override;
  Firmware firmware() override;
  unsigned systemLocale() override;
  unsigned setThreadLocale(unsigned locale) override;
  bool fontExists(const std::string& name) override;
  ScreenRoom screenRoom() override;
  LocalTime now() override;
  std::uint64_t milliseconds() override;
  void reseedRandom() override;
  double random() override;

 private:
  std::uint64_t randomState_ = 0;
};

}  // namespace pavoline
