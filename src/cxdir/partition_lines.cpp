#include "cxdir/partition_lines.h"

#include <algorithm>

namespace pavoline {
namespace {

constexpr std::size_t kPrimarySlots = 4;

struct GptKind {
  GptType type;
  std::string_view kind;
};

// The first three groups of a type identifier lie on the disk with their bytes reversed.
constexpr GptType Guid(std::uint32_t a, std::uint16_t b, std::uint16_t c, std::uint64_t d) {
  GptType type{};
  for (std::size_t i = 0; i < 4; ++i) type[i] = static_cast<std::uint8_t>(a >> (8 * i));
  for (std::size_t i = 0; i < 2; ++i) type[4 + i] = static_cast<std::uint8_t>(b >> (8 * i));
  for (std::size_t i = 0; i < 2; ++i) type[6 + i] = static_cast<std::uint8_t>(c >> (8 * i));
  for (std::size_t i = 0; i < 8; ++i) type[8 + i] = static_cast<std::uint8_t>(d >> (56 - 8 * i));
  return type;
}

constexpr GptKind kGptKinds[] = {
    {Guid(0xEBD0A0A2, 0xB9E5, 0x4433, 0x87C068B6B72699C7), "Primary"},
    {Guid(0xC12A7328, 0xF81F, 0x11D2, 0xBA4B00A0C93EC93B), "EFI"},
    {Guid(0xE3C9E316, 0x0B5C, 0x4DB8, 0x817DF92DF00215AE), "MSR"},
    {Guid(0xDE94BBA4, 0x06D1, 0x4D40, 0xA16ABFD50179D6AC), "Recovery"},
    {Guid(0x5808C8AA, 0x7E8F, 0x42E0, 0x85D2E1E90434CFB3), "Dynamic"},  // its database
    {Guid(0xAF9B60A0, 0x1431, 0x4F62, 0xBC683311714A69AD), "Dynamic"},  // its data
    {Guid(0xE75CAF8F, 0xF680, 0x4CEE, 0xAFA3B001E56EFC2D), "Spaces"},
    {Guid(0x0FC63DAF, 0x8483, 0x4772, 0x8E793D69D8477DE4), "Linux"},
    {Guid(0x0657FD6D, 0xA4AB, 0x43C4, 0x84E50933C84B4F4F), "Linux"},  // swap
};

struct MbrKind {
  std::uint8_t type;
  std::string_view kind;
};

constexpr std::uint8_t kMbrRecovery = 0x27;

// Types that say more than their place in the table does.
constexpr MbrKind kMbrKinds[] = {
    {0xEF, "EFI"},     {kMbrRecovery, "Recovery"},
    {0x42, "Dynamic"}, {0x82, "Linux"},
    {0x83, "Linux"},   {0x8E, "Linux"},
};

std::string_view MbrPartitionKind(const TableEntry& entry, std::size_t index) {
  const bool primary = index < kPrimarySlots;
  if (entry.mbrType == kMbrRecovery && entry.active && primary) return "Primary";
  for (const MbrKind& known : kMbrKinds) {
    if (known.type == entry.mbrType) return known.kind;
  }
  return primary ? "Primary" : "Logical";
}

std::string_view GptPartitionKind(const GptType& type) {
  for (const GptKind& known : kGptKinds) {
    if (known.type == type) return known.kind;
  }
  return "Other";
}

// One line, one field: whatever would end either becomes a blank.
std::string FieldText(std::string_view text) {
  std::string field(text);
  std::replace_if(
      field.begin(), field.end(),
      [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
  return field;
}

bool IsListed(PartitionStyle style, const TableEntry& entry) {
  if (style == PartitionStyle::kGpt) return entry.gptType != GptType{};
  // Empty; frames of logical drives; the place holder on a disk whose real table is a GPT.
  constexpr std::uint8_t kNotPartitions[] = {0x00, 0x05, 0x0F, 0x85, 0xEE};
  return std::find(std::begin(kNotPartitions), std::end(kNotPartitions), entry.mbrType) ==
         std::end(kNotPartitions);
}

// A disk without a table reports its one partition as number 0; whoever reads the list counts
// from 1.
std::uint32_t FromOne(std::uint32_t partition) { return std::max<std::uint32_t>(partition, 1); }

bool LiesOn(const Volume& volume, const Disk& disk, const TableEntry& entry) {
  return std::any_of(volume.extents.begin(), volume.extents.end(), [&](const VolumeExtent& extent) {
    return extent.disk == disk.number && extent.offset >= entry.offset &&
           extent.offset - entry.offset < entry.bytes;
  });
}

// What to print beside a partition: its volumes with a letter, else the one without, else nothing.
std::vector<Volume> VolumesOn(const Disk& disk, const TableEntry& entry,
                              const std::vector<Volume>& volumes) {
  std::vector<Volume> lettered;
  Volume letterless;
  for (const Volume& volume : volumes) {
    if (!LiesOn(volume, disk, entry)) continue;
    if (!volume.root.empty()) {
      lettered.push_back(volume);
    } else if (letterless.extents.empty()) {
      letterless = volume;
    }
  }
  return lettered.empty() ? std::vector<Volume>{letterless} : lettered;
}

std::string Line(const Disk& disk, const TableEntry& entry, std::size_t index,
                 const Volume& volume) {
  const bool gpt = disk.style == PartitionStyle::kGpt;
  const std::string fields[] = {
      std::to_string(disk.number + 1) + ":" + std::to_string(FromOne(entry.number)),
      volume.root,
      SizeText(entry.bytes),
      volume.fileSystem,
      std::string(PartitionKind(disk.style, entry, index)),
      disk.model,
      volume.label,
      gpt ? "GPT" : "MBR",
      !gpt && entry.active ? "1" : "0",
  };
  return JoinFields(fields);
}

}  // namespace

std::string SizeText(std::uint64_t bytes) {
  constexpr std::uint64_t kMegabyte = std::uint64_t{1} << 20;
  constexpr std::uint64_t kGigabyte = std::uint64_t{1} << 30;
  const bool large = bytes >= kGigabyte;
  const std::uint64_t unit = large ? kGigabyte : kMegabyte;
  const std::uint64_t hundredths = bytes % unit * 100 / unit;
  return std::to_string(bytes / unit) + (hundredths < 10 ? ".0" : ".") +
         std::to_string(hundredths) + (large ? "GB" : "MB");
}

std::string_view PartitionKind(PartitionStyle style, const TableEntry& entry, std::size_t index) {
  return style == PartitionStyle::kGpt ? GptPartitionKind(entry.gptType)
                                       : MbrPartitionKind(entry, index);
}

std::string Trimmed(std::string_view text) {
  const std::string field = FieldText(text);
  const std::size_t first = field.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return field.substr(first, field.find_last_not_of(' ') - first + 1);
}

std::string JoinFields(std::span<const std::string> fields) {
  std::string line;
  for (const std::string& field : fields) {
    if (&field != &fields[0]) line += '\t';
    line += FieldText(field);
  }
  return line;
}

std::string ModelText(std::string_view vendor, std::string_view product) {
  const std::string maker = Trimmed(vendor);
  const std::string name = Trimmed(product);
  if (maker.empty() || maker == "ATA" || maker == "NVMe") return name;
  return name.empty() ? maker : maker + " " + name;
}

std::vector<std::string> PartitionLines(const std::vector<Disk>& disks,
                                        const std::vector<Volume>& volumes) {
  std::vector<std::string> lines;
  for (const Disk& disk : disks) {
    for (std::size_t i = 0; i < disk.entries.size(); ++i) {
      const TableEntry& entry = disk.entries[i];
      if (!IsListed(disk.style, entry)) continue;
      for (const Volume& volume : VolumesOn(disk, entry, volumes)) {
        lines.push_back(Line(disk, entry, i, volume));
      }
    }
  }
  return lines;
}

}  // namespace pavoline
