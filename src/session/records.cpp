#include "session/records.h"

#include "platform/paths.h"
#include "platform/text.h"

namespace pavoline {

ImageKind KindOf(const std::string& path) {
  const std::string end = LastFourLower(path);
  if (end == ".wim") return ImageKind::kWim;
  if (end == ".esd") return ImageKind::kEsd;
  if (end == ".iso") return ImageKind::kIso;
  if (end == ".gho") return ImageKind::kGho;
  if (end == ".swm") return ImageKind::kSwm;
  return ImageKind::kNone;
}

std::string PartitionEntry::field(std::size_t n) const {
  const auto fields = Split(line, "\t");
  return n < fields.size() ? fields[n] : std::string();
}

int PartitionEntry::diskNumber() const { return LeadingInteger16(address()); }

std::size_t PartitionEntry::fieldCount() const { return Split(line, "\t").size(); }

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
