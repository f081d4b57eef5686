#include "session/machine_facts.h"

#include <gtest/gtest.h>

#include "platform/smbios.h"
#include "support/workshop.h"

namespace pavoline::testing {

TEST(Firmware, NamesTheMachineAndIsReadWithEveryFault) {
  const std::string whole = FirmwareTable(" S 1 ", "Model \x80X");
  EXPECT_EQ(ReadFirmwareTable(whole).serial, "S 1");
  EXPECT_EQ(ReadFirmwareTable(whole).model, "Model X");
  for (std::size_t kept = 0; kept < whole.size(); ++kept) {
    const FirmwareNames names = ReadFirmwareTable(whole.substr(0, kept));
    EXPECT_TRUE(std::string("S 1").starts_with(names.serial)) << kept;
    EXPECT_TRUE(std::string("Model X").starts_with(names.model)) << kept;
  }
  const std::size_t system = whole.find("\x01\x08");
  for (const auto& [place, byte] :
       {std::pair{1u, '\x03'}, {1u, '\xFF'}, {7u, '\0'}, {7u, '\x09'}}) {
    std::string broken = whole;
    broken[system + place] = byte;
    EXPECT_EQ(ReadFirmwareTable(broken).serial, "") << place << " " << int(byte);
  }
}

TEST(MachineFacts, StandWhereTheirPlaceholdersStoodOrAreMissed) {
  constexpr ValueUse path = ValueUse::kPath, name = ValueUse::kComputerName;
  struct Case {
    ValueUse use;
    std::string serial, value, text, untold;
  };
  for (const Case& c :
       {Case{path, "5CG/12*34. ", "Z:\\%Serial%\\%MODEL%", "Z:\\5CG-12-34\\HP 840", ""},
        Case{path, "A1", "%p%%%", "%p%%%", ""}, Case{path, "..-", "%serial%", "", "%serial%"},
        Case{path, "To be filled by O.E.M.", "x%serial%", "", "%serial%"},
        Case{path, "00000000", "%SERIAL%", "", "%serial%"},
        Case{name, "A_1 b-", "%serial%", "A1b", ""},
        Case{name, "12345678901", "%serial%", "PC-12345678901", ""},
        Case{name, "VMware-56 4d 01 02", "PC-%serial%", "PC-are-564d0102", ""},
        Case{name, "VMware-56 4d 01 02", "HALL-%serial%-%mac%", "HALL-0102-A0B0C", ""},
        Case{name, "A1", "A-SCHOOL-NAME-7%serial%", "", "%serial%"}}) {
    Workshop w;
    w.environment.firmwareBytes = FirmwareTable(c.serial, "HP 840");
    w.environment.network = "00155D0A0B0C";
    const MachineValue value = WithMachineFacts(w.session, c.value, c.use);
    EXPECT_EQ(value.text, c.text) << c.serial << " " << c.value;
    EXPECT_EQ(value.untold, c.untold) << c.serial << " " << c.value;
  }
}

}  // namespace pavoline::testing
