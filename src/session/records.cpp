#include "session/records.h"

#include "platform/text.h"

namespace pavoline {

PartitionEntry::PartitionEntry(std::string listed) : line(std::move(listed)) {
  std::vector<std::string> fields = Split(line, "\t");
  fieldCount = fields.size();
  fields.resize(9);
  active = fields[8] == "1";
  int place = 0;
  for (std::string* field : {&address, &drive, &size, &fileSystem, &kind, &disk, &label, &style}) {
    *field = std::move(fields[static_cast<std::size_t>(place++)]);
  }
  diskNumber = LeadingInteger16(address);
}

const std::string* PluginTable::find(const std::string& name) const {
  for (const auto& [key, command] : entries_) {
    if (key == name) return &command;
  }
  return nullptr;
}

void PluginTable::add(const std::string& name, const std::string& commandLine) {
  if (!contains(name)) entries_.emplace_back(name, commandLine);
}

}  // namespace pavoline
