#include "cxdir/device_answer.h"
#include "cxdir/disk_lines.h"
#include "disk/physical_disks.h"
#include "fuzz/fuzz.h"
#include "platform/text.h"
#include "session/machine_facts.h"

namespace pavoline::testing {
namespace {

// A disk whose layout and model are the input, with a volume on each of its partitions, through the
// lister to the list of the program.
void ListDisk(std::string_view input) {
  Disk disk;
  ReadLayout(std::as_bytes(std::span(input)), disk);
  disk.model = ReadModel(std::as_bytes(std::span(input)));
  std::vector<Volume> volumes;
  for (const TableEntry& entry : disk.entries) {
    volumes.push_back({{{disk.number, entry.offset, entry.bytes}}, "D:", "NTFS", disk.model});
    volumes.push_back({{{disk.number, entry.offset, 1}}, "", std::string(input.substr(0, 50)), ""});
  }
  Holds(disk.entries.size() <= input.size() / answer::kEntryBytes, "no entry is made up");
  for (const std::string& line : PartitionLines({disk}, volumes)) {
    const PartitionEntry entry{line};
    Holds(entry.fieldCount == 9 && line.find_first_of("\r\n") == std::string::npos &&
              entry.diskNumber == 1 && entry.size.ends_with("B"),
          "a line has its fields");
  }
}

// The firmware's answer, through the facts to names of files and of a computer.
void NameMachine(std::string_view input) {
  static FuzzShop shop;
  shop.environment.firmwareBytes = input;
  const auto filled = [&](const char* value, ValueUse use) {
    const MachineValue result = WithMachineFacts(shop.session, value, use);
    Holds(result.text.empty() != result.untold.empty(), "a value is filled or missed");
    return result.text;
  };
  for (const char* value : {"%serial%", "%model%"}) {
    Holds(filled(value, ValueUse::kPath).find_first_of("\\/:*?\"<>|\n%") == std::string::npos,
          "a fact is part of a file's name");
  }
  Holds(filled("AT-%serial%%MODEL%", ValueUse::kComputerName).size() <= 15,
        "a computer's name has its length");
}

// As a line of the list of disks, and as the answers of one whose line is then read back.
void ListWholeDisk(std::string_view input) {
  const auto line = ReadDiskLine(std::string(input));
  Holds(!line || !line->empty || input.ends_with("\tempty"), "a cut line names no empty disk");
  WholeDisk whole;
  DeviceFacts facts;
  ReadLayout(std::as_bytes(std::span(input)), whole.disk);
  ReadDeviceFacts(std::as_bytes(std::span(input)), facts);
  whole.serial = facts.serial;
  Holds(ReadDiskLine(DiskLine(whole, {})).has_value(), "the program reads what the lister prints");
}

}  // namespace

std::vector<FuzzTarget> DiskTargets() {
  return {{"disk_answer", ListDisk}, {"disk_line", ListWholeDisk}, {"firmware_table", NameMachine}};
}

}  // namespace pavoline::testing
