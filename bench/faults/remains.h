#pragma once

#include <string>

// What is left on the bench after a fault.
namespace faults {

// "E: the system; S: new menu; temp: apply.bat; runs: format.com".
std::string LeftBehind(int edition);
bool SystemComplete(int edition);
bool MenuNew();
bool DriversIn();
bool OtherDrivesWhole();
// What the program's record says last of an outcome, or of its end.
std::string Recorded();

}  // namespace faults
