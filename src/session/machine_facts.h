#pragma once

#include <string>

#include "session/session.h"

// What tells one machine from others, and the values of switches and settings that name it by
// "%serial%", "%model%" and "%mac%", in any case of letters.
namespace pavoline {

// Empty: the machine does not tell. What vendors write where there is nothing ("To be filled by
// O.E.M.") counts as nothing.
struct MachineFacts {
  std::string serial, model;
  std::string mac;  // twelve hexadecimal digits
};
MachineFacts FactsOfMachine(Ground& ground);

// A fact as a part of a file's name: what such a name cannot hold becomes a hyphen.
std::string FitForFileName(const std::string& fact);

enum class ValueUse { kPath, kComputerName };

// A value with the facts put in.
struct MachineValue {
  std::string text;
  // The placeholder that the machine has nothing for, or no room; the text is then empty.
  std::string untold;
};

// A value without a placeholder stays as it is. A computer name has letters, digits and hyphens of
// the facts, is no number, and has at most 15 characters: what stands around the facts stays whole,
// of the longest fact the end is kept.
MachineValue WithMachineFacts(Ground& ground, const std::string& value, ValueUse use);

// Says why a value that is untold cannot be used.
std::string UntoldText(const Ground& ground, const std::string& value, const MachineValue& filled);

bool NamesMachine(const std::string& value);  // holds a placeholder

}  // namespace pavoline
