#include "session/machine_facts.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "form/text_numbers.h"
#include "platform/environment.h"
#include "platform/smbios.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr std::size_t kLongestComputerName = 15;
constexpr std::size_t kLongestInFileName = 64;

bool IsAlnum(unsigned char c) { return c < 0x80 && std::isalnum(c) != 0; }

// Vendors' words for "nothing", and one character over and over.
bool SaysNothing(const std::string& fact) {
  static constexpr std::string_view kNothing[] = {"none",
                                                  "n/a",
                                                  "na",
                                                  "unknown",
                                                  "undefined",
                                                  "invalid",
                                                  "empty",
                                                  "oem",
                                                  "o.e.m.",
                                                  "default string",
                                                  "default",
                                                  "not specified",
                                                  "not available",
                                                  "not applicable",
                                                  "not present",
                                                  "no asset information",
                                                  "serial number",
                                                  "system serial number",
                                                  "serialnumber",
                                                  "chassis serial number",
                                                  "product name",
                                                  "system product name",
                                                  "system name",
                                                  "system version",
                                                  "type1productconfigid",
                                                  "123456789",
                                                  "1234567890",
                                                  "0123456789"};
  const std::string text = LowerAscii(fact);
  std::string letters = text;
  std::erase_if(letters, [](unsigned char c) { return !IsAlnum(c); });
  return letters.find_first_not_of(letters.front()) == std::string::npos ||
         text.starts_with("to be filled") ||
         std::ranges::find(kNothing, std::string_view(text)) != std::end(kNothing);
}

std::string Told(const std::string& fact) {
  const bool letters = std::ranges::any_of(fact, IsAlnum);
  return letters && !SaysNothing(fact) ? fact : std::string();
}

struct Piece {
  std::string text;  // of a fact: fit for the use
  bool fact = false;
};

struct Placeholder {
  std::string_view word;
  std::string MachineFacts::*fact;
};
constexpr Placeholder kPlaceholders[] = {{"%serial%", &MachineFacts::serial},
                                         {"%model%", &MachineFacts::model},
                                         {"%mac%", &MachineFacts::mac}};

const Placeholder* PlaceholderAt(const std::string& lower, std::size_t place) {
  for (const Placeholder& each : kPlaceholders) {
    if (lower.compare(place, each.word.size(), each.word) == 0) return &each;
  }
  return nullptr;
}

std::string FitForComputerName(std::string fact) {
  std::erase_if(fact, [](unsigned char c) { return !IsAlnum(c) && c != '-'; });
  return fact;
}

std::string Joined(const std::vector<Piece>& pieces) {
  std::string text;
  for (const Piece& piece : pieces) text += piece.text;
  return text;
}

// Empty when what stands around the facts leaves them no room.
std::string ComputerName(std::vector<Piece> pieces) {
  constexpr std::string_view kBeforeNumber = "PC-";
  const auto digit = [](unsigned char c) { return c >= '0' && c <= '9'; };
  // Setup refuses a name of digits only.
  if (std::ranges::all_of(Joined(pieces), digit)) {
    pieces.insert(pieces.begin(), {std::string(kBeforeNumber), false});
  }
  const auto length = [](const Piece& piece) { return piece.fact ? piece.text.size() : 0; };
  while (Joined(pieces).size() > kLongestComputerName) {
    Piece& longest = *std::ranges::max_element(pieces, {}, length);
    if (length(longest) <= 1) return {};
    longest.text.erase(0, 1);
  }
  const std::string name = Joined(pieces);
  const auto first = name.find_first_not_of('-');
  return first == std::string::npos ? name
                                    : name.substr(first, name.find_last_not_of('-') + 1 - first);
}

}  // namespace

MachineFacts FactsOfMachine(Ground& ground) {
  Environment& environment = ground.platform.environment;
  const FirmwareNames names = ReadFirmwareTable(environment.firmwareTable());
  return {Told(names.serial), Told(names.model), Told(environment.networkAddress())};
}

std::string FitForFileName(const std::string& fact) {
  constexpr std::string_view kRefused = "\\/:*?\"<>|%";
  std::string name = fact.substr(0, kLongestInFileName);
  std::ranges::replace_if(
      name, [&](char c) { return kRefused.find(c) != std::string_view::npos; }, '-');
  const auto begin = name.find_first_not_of(" ."), end = name.find_last_not_of(" .");
  return begin == std::string::npos ? std::string() : name.substr(begin, end + 1 - begin);
}

MachineValue WithMachineFacts(Ground& ground, const std::string& value, ValueUse use) {
  if (!NamesMachine(value)) return {value, ""};
  const MachineFacts facts = FactsOfMachine(ground);
  const std::string lower = LowerAscii(value);
  std::vector<Piece> pieces;
  std::string word;  // the last placeholder
  for (std::size_t place = 0; place < value.size();) {
    const Placeholder* found = PlaceholderAt(lower, place);
    if (found == nullptr) {
      if (pieces.empty() || pieces.back().fact) pieces.push_back({});
      pieces.back().text += value[place++];
      continue;
    }
    const std::string& fact = facts.*found->fact;
    const std::string fit =
        use == ValueUse::kPath ? FitForFileName(fact) : FitForComputerName(fact);
    word = found->word;
    if (fit.empty()) return {"", word};
    pieces.push_back({fit, true});
    place += word.size();
  }
  if (use == ValueUse::kPath) return {Joined(pieces), ""};
  const std::string name = ComputerName(std::move(pieces));
  return {name, name.empty() ? word : ""};
}

std::string UntoldText(const Ground& ground, const std::string& value, const MachineValue& filled) {
  return ReplaceAll(ReplaceAll(More(ground, kMoreUntold), "%v%", filled.untold), "%f%", value);
}

bool NamesMachine(const std::string& value) {
  const std::string lower = LowerAscii(value);
  return std::ranges::any_of(kPlaceholders,
                             [&](const Placeholder& each) { return Contains(lower, each.word); });
}

}  // namespace pavoline
