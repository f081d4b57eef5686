#pragma once

#include <string>
#include <string_view>

namespace pavoline {

// What the firmware's table says of the whole machine, as the vendor wrote it: plain ASCII without
// blanks at the ends, empty where the table says nothing.
struct FirmwareNames {
  std::string serial;
  std::string model;  // the product's name
};

// Reads the system's answer to a request for the SMBIOS table: eight bytes of its own, then the
// structures. Any bytes may be given; what a broken table does not hold is empty.
FirmwareNames ReadFirmwareTable(std::string_view answer);

}  // namespace pavoline
