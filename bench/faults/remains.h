#pragma once

#include <string>

// What is left on the bench after a fault.
namespace faults {

// "E: the system; S: new menu; temp: apply.bat; runs: format.com".
std::string leftBehind(int edition);
bool systemComplete(int edition);
bool menuNew();
bool driversIn();
bool otherDrivesWhole();
// What the program's record says last of an outcome, or of its end.
std::string recorded();

}  // namespace faults
