#include "app/command_line.h"

#include <algorithm>
#include <functional>
#include <string_view>

#include "platform/text.h"

namespace pavoline {
namespace {

using Setter = std::function<void(CommandLine&, const std::string& value, TextServices&)>;

struct Switch {
  const char* word;
  Setter set;  // gets the lower-case argument without the switch word, trimmed
};

Setter Flag(bool CommandLineOptions::*member) {
  return [member](CommandLine& line, const std::string&, TextServices&) {
    line.options.*member = true;
  };
}

Setter Drive(std::string CommandLineOptions::*member) {
  return [member](CommandLine& line, const std::string& value, TextServices& text) {
    line.options.*member = text.upper(value);
  };
}

// A locale counts when its number has more than three digits: 1033 does, 12 is a typing error.
void SetLocale(CommandLine& line, const std::string& value, TextServices&) {
  const double number = LeadingNumber(value);
  if (number >= 1000 && number <= 0xFFFFF) line.locale = static_cast<unsigned>(number);
}

// Those that stand for a setting.
struct NamedValue {
  const char* word;
  std::string CommandLineOptions::*member;
};
constexpr NamedValue kNamedValues[] = {
    {"/ini:", &CommandLineOptions::settingsFile},     {"/name:", &CommandLineOptions::computerName},
    {"/drivers:", &CommandLineOptions::driverFolder}, {"/answer:", &CommandLineOptions::answerFile},
    {"/logdir:", &CommandLineOptions::logDir},
};

const NamedValue* NamedValueOf(const std::string& argument) {
  const std::string lower = LowerAscii(argument);
  for (const NamedValue& each : kNamedValues) {
    if (lower.starts_with(each.word)) return &each;
  }
  return nullptr;
}

const std::vector<Switch>& Switches() {
  static const std::vector<Switch> switches = {
      {"/lng:", SetLocale},
      {"/source:", [](CommandLine& line, const std::string& value,
                      TextServices&) { line.options.sourcePath = value; }},
      {"/wimindex:", [](CommandLine& line, const std::string& value,
                        TextServices&) { line.options.wimIndex = LeadingInteger16(value); }},
      {"/bootrepair", Flag(&CommandLineOptions::bootRepair)},
      {"/reboot", Flag(&CommandLineOptions::reboot)},
      {"/install", Flag(&CommandLineOptions::install)},
      {"/bootpart:", Drive(&CommandLineOptions::bootPartition)},
      {"/instpart:", Drive(&CommandLineOptions::installPartition)},
      {"/formatinstpart", Flag(&CommandLineOptions::formatInstallPartition)},
      {"/dryrun", Flag(&CommandLineOptions::dryRun)},
      // Spelled so on purpose: existing unattended media use it, and "/silent" must do nothing.
      {"/slient", Flag(&CommandLineOptions::silent)},
  };
  return switches;
}

}  // namespace

CommandLine ParseCommandLine(const std::vector<std::string>& arguments, TextServices& text) {
  CommandLine line;
  for (const std::string& argument : arguments) {
    if (const NamedValue* named = NamedValueOf(argument)) {
      line.options.*named->member = Trim(argument.substr(std::string_view(named->word).size()));
      continue;
    }
    const std::string lower = text.lower(argument);
    for (const Switch& known : Switches()) {
      if (!Contains(lower, known.word)) continue;
      known.set(line, Trim(ReplaceAll(lower, known.word, "")), text);
    }
  }
  return line;
}

std::vector<std::string> SwitchWords() {
  std::vector<std::string> words;
  for (const Switch& known : Switches()) words.emplace_back(known.word);
  for (const NamedValue& named : kNamedValues) words.emplace_back(named.word);
  return words;
}

std::string RecordedArgument(const std::string& argument, TextServices& text) {
  const std::string lower = text.lower(argument);
  const bool known = std::ranges::any_of(
      SwitchWords(), [&](const std::string& word) { return Contains(lower, word); });
  if (known) return argument;
  const bool isSwitch = argument.starts_with('/') || argument.starts_with('-');
  const auto value = isSwitch ? argument.find_first_of(":=") : 0;
  return value == std::string::npos ? argument : argument.substr(0, value) + "...";
}

}  // namespace pavoline
