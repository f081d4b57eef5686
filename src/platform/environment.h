#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pavoline {

struct LocalTime {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, millisecond = 0;
};

// In twips, 1440 to the inch at the resolution that windows are drawn in.
struct ScreenRoom {
  int width = 0, height = 0;
};

// What the machine was started by.
enum class Firmware { kUnknown, kBios, kUefi };

// What the program asks about the machine and the process it runs in.
class Environment {
 public:
  virtual ~Environment() = default;

  virtual std::string variable(const std::string& name) = 0;  // empty when not set

  virtual void setVariable(const std::string& name, const std::string& value) = 0;

  // The process's arguments after the platform's splitting rules, the program path first.
  virtual std::vector<std::string> arguments() = 0;
  virtual std::string programFolder() = 0;  // no trailing backslash
  virtual bool is64BitProcess() = 0;
  virtual Firmware firmware() = 0;

  // Adds text to what the process writes to its standard output: to the file or program that takes
  // it, as UTF-8, or else to the console of whoever started the process. False when there is none.
  virtual bool print(const std::string& text) = 0;

  // The firmware's SMBIOS table as the system hands it out, eight bytes of its own in front. Empty
  // without one.
  virtual std::string firmwareTable() = 0;
  // Twelve capital hexadecimal digits of the first Ethernet or wireless adapter that has a link;
  // empty without one.
  virtual std::string networkAddress() = 0;

  virtual unsigned systemLocale() = 0;  // locale identifiers, for example 1033
  // Returns the thread's locale from now on: the old one when the system does not know this one.
  virtual unsigned setThreadLocale(unsigned locale) = 0;

  virtual bool fontExists(const std::string& name) = 0;
  virtual ScreenRoom screenRoom() = 0;  // what the main screen leaves to windows

  virtual LocalTime now() = 0;
  // Since some fixed moment; never set back, unlike the clock.
  virtual std::uint64_t milliseconds() = 0;
  virtual void reseedRandom() = 0;
  virtual double random() = 0;  // uniform in [0, 1)
};

}  // namespace pavoline
