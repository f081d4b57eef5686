#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// What the steps of an installation hand to each other.
namespace pavoline {

// What a source path is, told by its last four characters.
enum class ImageKind { kNone, kWim, kEsd, kIso, kGho, kSwm };
ImageKind KindOf(const std::string& path);

// One image of a WIM or ESD file.
struct WimImageInfo {
  int index = 0;  // from 1
  std::string archCode, archText;
  std::string language;  // "en-US"; empty when the image names none
  std::string major, minor, build, spBuild;
  std::string displayName, name;
  std::string listText, detailText;  // its lines in the edition list and the detail list
};

// One line of the partition lister, fields separated by tabs.
struct PartitionEntry {
  std::string line;

  // Field n counted from 0; empty when the line is shorter.
  std::string field(std::size_t n) const;
  std::size_t fieldCount() const;
  std::string address() const { return field(0); }  // as the Ghost program writes it, "1:2"
  int diskNumber() const;                           // from 1; 0 when the address names none
  std::string drive() const { return field(1); }    // "D:"
  std::string size() const { return field(2); }
  std::string fileSystem() const { return field(3); }
  std::string kind() const { return field(4); }  // "Primary", "EFI", ...
  std::string disk() const { return field(5); }
  std::string label() const { return field(6); }
  std::string style() const { return field(7); }  // "MBR" or "GPT"
  bool active() const { return field(8) == "1"; }
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

// A partition offered in a chooser: drive, label, disk, file system, size.
struct PartitionRow {
  std::vector<std::string> columns;
  int diskNumber = 0;  // from 1
  const std::string& drive() const { return columns.front(); }
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
