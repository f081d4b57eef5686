#include "disk/physical_disks.h"

#include <algorithm>
#include <charconv>

#include "disk/lister.h"
#include "platform/drives.h"
#include "platform/environment.h"
#include "platform/text.h"

namespace pavoline {
namespace {

constexpr std::size_t kDiskFields = 8;
constexpr std::uint64_t kSmallestDisk = std::uint64_t{4} << 30;  // no system fits on less

// A number and nothing else.
template <class Number>
bool ReadWhole(const std::string& text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

bool IsOneOf(const std::string& text, std::initializer_list<const char*> words) {
  return std::ranges::find(words, text) != words.end();
}

// From 0. The disks of the running system and of the program, which hold something anyway.
bool IsOwnDisk(Ground& ground, std::uint32_t number) {
  const std::string drives[] = {ground.paths.appDir.substr(0, 2),
                                "X:", ground.platform.environment.variable("SYSTEMDRIVE")};
  return std::ranges::any_of(drives, [&](const std::string& drive) {
    const auto position = ground.platform.drives.position(drive);
    return position && position->disk == number + 1;
  });
}

bool MayBePrepared(Session& session, const PhysicalDisk& disk) {
  return disk.empty && disk.bytes >= kSmallestDisk &&
         (!disk.removable || session.options.usbPartition) && !IsOwnDisk(session, disk.number);
}

}  // namespace

std::optional<PhysicalDisk> ReadDiskLine(const std::string& line) {
  const auto fields = Split(line, "\t");
  PhysicalDisk disk;
  std::uint32_t partitions = 0;
  if (fields.size() != kDiskFields || !ReadWhole(fields[0], disk.number) ||
      !ReadWhole(fields[1], disk.bytes) || !IsOneOf(fields[4], {"RAW", "MBR", "GPT"}) ||
      !ReadWhole(fields[5], partitions) || !IsOneOf(fields[6], {"fixed", "removable"})) {
    return std::nullopt;
  }
  disk.model = fields[2];
  disk.serial = fields[3];
  disk.style = fields[4];
  disk.removable = fields[6] == "removable";
  disk.empty = partitions == 0 && fields[7] == "empty";
  return disk;
}

std::optional<std::vector<PhysicalDisk>> ListEmptyDisks(Session& session) {
  auto lines = RunLister(session, "/disks", "GetDisk");
  // The interpreter may leave a redirected log empty: an empty list is believed the second time.
  if (!session.form.unloaded() && (!lines || lines->empty())) {
    lines = RunLister(session, "/disks", "GetDisk");
  }
  if (!lines || lines->empty()) {
    Journal(session, "disks: no list");
    return std::nullopt;
  }
  std::vector<PhysicalDisk> disks;
  for (const std::string& line : *lines) {
    const auto disk = ReadDiskLine(line);
    const bool offered = disk && MayBePrepared(session, *disk);
    if (offered) disks.push_back(*disk);
    Journal(session, "disk " + ReplaceAll(line, "\t", ", ") + (offered ? ": offered" : ""));
  }
  return disks;
}

}  // namespace pavoline
