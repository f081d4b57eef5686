#include "cxdir/disk_lines.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <span>

namespace pavoline {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t kMasterSector = 512;  // what a master boot record takes of its sector
constexpr std::size_t kFirstSlot = 446, kSlotBytes = 16, kMark = 510;
constexpr std::size_t kGptHeaderBytes = 92;
constexpr std::byte kProtective{0xEE};

bool AllZero(Bytes bytes) {
  return std::ranges::all_of(bytes, [](std::byte each) { return each == std::byte{0}; });
}

bool BeginsWith(Bytes bytes, std::string_view text) {
  return bytes.size() >= text.size() && std::memcmp(bytes.data(), text.data(), text.size()) == 0;
}

// A master boot record with no code or the system's own, which tells it from a file system's boot
// sector. `slots`: how many bytes of its slots may hold something.
bool IsMasterSector(Bytes sector, std::size_t slots) {
  constexpr std::size_t kCode = 440;  // a disk signature follows
  const bool code = AllZero(sector.first(kCode)) || BeginsWith(sector, "\x33\xC0");
  return code && sector[kMark] == std::byte{0x55} && sector[kMark + 1] == std::byte{0xAA} &&
         AllZero(sector.subspan(kFirstSlot + slots, kMark - kFirstSlot - slots));
}

bool IsGptHeader(Bytes sector) {
  return BeginsWith(sector, "EFI PART") && AllZero(sector.subspan(kGptHeaderBytes));
}

bool HoldsOnlyMbr(const WholeDisk& whole) {
  const Bytes first = whole.first;
  return IsMasterSector(first.first(kMasterSector), 0) && AllZero(first.subspan(kMasterSector)) &&
         AllZero(whole.last);
}

// The entries follow the header in front and precede the one at the end, so that a table without
// any is zeros.
bool HoldsOnlyGpt(const WholeDisk& whole) {
  const std::size_t sector = whole.sectorBytes;
  const Bytes first = whole.first, last = whole.last;
  constexpr std::size_t kTypeOfSlot = 4;
  return IsMasterSector(first.first(kMasterSector), kSlotBytes) &&
         first[kFirstSlot + kTypeOfSlot] == kProtective &&
         AllZero(first.subspan(kMasterSector, sector - kMasterSector)) &&
         IsGptHeader(first.subspan(sector, sector)) && AllZero(first.subspan(2 * sector)) &&
         AllZero(last.first(last.size() - sector)) && IsGptHeader(last.last(sector));
}

bool HoldsNothing(const WholeDisk& whole) {
  if (whole.first.size() != kEndBytes || whole.last.size() != kEndBytes) return false;
  if (whole.sectorBytes < kMasterSector || whole.sectorBytes > kEndBytes / 4) return false;
  switch (whole.disk.style) {
    case PartitionStyle::kRaw:
      return AllZero(whole.first) && AllZero(whole.last);
    case PartitionStyle::kMbr:
      return HoldsOnlyMbr(whole);
    case PartitionStyle::kGpt:
      return HoldsOnlyGpt(whole);
  }
  return false;
}

// Whatever an entry stands for: frames of logical drives and place holders keep a disk as well.
std::ptrdiff_t UsedEntries(const Disk& disk) {
  return std::ranges::count_if(disk.entries, [&](const TableEntry& entry) {
    return disk.style == PartitionStyle::kGpt ? entry.gptType != GptType{} : entry.mbrType != 0;
  });
}

bool LiesOn(const Volume& volume, const Disk& disk) {
  return std::ranges::any_of(
      volume.extents, [&](const VolumeExtent& extent) { return extent.disk == disk.number; });
}

std::string_view StyleText(PartitionStyle style) {
  if (style == PartitionStyle::kRaw) return "RAW";
  return style == PartitionStyle::kGpt ? "GPT" : "MBR";
}

}  // namespace

std::string_view DiskState(const WholeDisk& whole, const std::vector<Volume>& volumes) {
  if (!whole.writable) return "read-only";
  if (UsedEntries(whole.disk) > 0) return "partitions";
  for (const Volume& volume : volumes) {
    if (LiesOn(volume, whole.disk)) return "volume";
  }
  return HoldsNothing(whole) ? "empty" : "data";
}

std::string DiskLine(const WholeDisk& whole, const std::vector<Volume>& volumes) {
  const std::string fields[] = {std::to_string(whole.disk.number),
                                std::to_string(whole.bytes),
                                whole.disk.model,
                                whole.serial,
                                std::string(StyleText(whole.disk.style)),
                                std::to_string(UsedEntries(whole.disk)),
                                whole.removable ? "removable" : "fixed",
                                std::string(DiskState(whole, volumes))};
  return JoinFields(fields);
}

}  // namespace pavoline
