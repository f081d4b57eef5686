#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/workshop.h"

namespace pavoline::testing {

// A reader of outside text that takes any bytes. What it promises of all of them, Holds tells.
struct FuzzTarget {
  const char* name;  // also of its folders below seeds/ and found/
  void (*run)(std::string_view input);
};
std::vector<FuzzTarget> LogTargets();      // what tools print
std::vector<FuzzTarget> FileTargets();     // what people and media bring
std::vector<FuzzTarget> CommandTargets();  // what the program writes with names from outside
std::vector<FuzzTarget> DiskTargets();     // what the partition lister is answered

void Holds(bool kept, const char* promise);  // ends the run when it is not
std::string_view TakeLine(std::string_view& rest);
unsigned TakeByte(std::string_view& rest);  // 0 at the end
bool IsUtf8(std::string_view text);

// One machine for all runs of a target: to make it anew costs more than what is tried.
struct FuzzShop : Workshop {
  FuzzShop() { files.shortNames = false; }
  void tidy();  // forgets what the run before did
};

}  // namespace pavoline::testing
