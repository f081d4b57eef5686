#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// What the steps of an installation hand to each other.
namespace pavoline {

// One image of a WIM or ESD file.
struct WimImageInfo {
  int index = 0;  // from 1
  std::string archCode, archText;
  std::string language;  // "en-US"; empty when the image names none
  std::string major, minor, build, spBuild;
  std::string displayName, name;
  std::string listText, detailText;  // its lines in the edition list and the detail list
};

// One line of the partition lister, taken to pieces at its tabs. What a short line lacks is empty.
struct PartitionEntry {
  PartitionEntry() = default;
  PartitionEntry(std::string listed);

  std::string line;  // the whole
  std::size_t fieldCount = 0;
  std::string address;  // as the Ghost program writes it, "1:2"
  int diskNumber = 0;   // from 1; 0 when the address names none
  std::string drive;    // "D:"
  std::string size;     // "465.76GB"
  std::string fileSystem;
  std::string kind;  // "Primary", "EFI", ...
  std::string disk;  // its model
  std::string label;
  std::string style;  // "MBR" or "GPT"
  bool active = false;
};

// Plug-ins by name in the order found, each with its command line.
class PluginTable {
 public:
  bool contains(const std::string& name) const { return find(name) != nullptr; }
  const std::string* find(const std::string& name) const;
  void add(const std::string& name, const std::string& commandLine);
  void clear() { entries_.clear(); }
  std::size_t size() const { return entries_.size(); }

 private:
  std::vector<std::pair<std::string, std::string>> entries_;
};

// An image found by the search.
struct FoundImage {
  std::string path;
  std::uint64_t size = 0;  // bytes
  std::string modified;    // "YYYY-MM-DD HH:MM"
};

// An ISO file and the drive that it is mounted as.
struct MountedIso {
  std::string drive;  // "F:"
  std::string file;
};

// A tool that the source box waits for.
struct SourceRun {
  bool waiting = false;
  std::string source;    // the box's text as the wait began
  bool changed = false;  // the box was given another text meanwhile
};

struct SearchState {
  bool takeFirst = false;  // the first image found becomes the source (inside a mounted ISO)
  bool stop = false;       // every listing returns at once
  bool running = false;
  std::vector<FoundImage> found;
};

}  // namespace pavoline
