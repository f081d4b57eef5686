#include "cxdir/partition_lines.h"

#include <gtest/gtest.h>

namespace pavoline {

constexpr std::uint64_t kMB = 1ull << 20;
constexpr std::uint64_t kGB = 1ull << 30;

// Types as they lie in the entries of a real disk.
constexpr GptType kEfi = {0x28, 0x73, 0x2A, 0xC1, 0x1F, 0xF8, 0xD2, 0x11,
                          0xBA, 0x4B, 0x00, 0xA0, 0xC9, 0x3E, 0xC9, 0x3B};
constexpr GptType kMsr = {0x16, 0xE3, 0xC9, 0xE3, 0x5C, 0x0B, 0xB8, 0x4D,
                          0x81, 0x7D, 0xF9, 0x2D, 0xF0, 0x02, 0x15, 0xAE};
constexpr GptType kBasic = {0xA2, 0xA0, 0xD0, 0xEB, 0xE5, 0xB9, 0x33, 0x44,
                            0x87, 0xC0, 0x68, 0xB6, 0xB7, 0x26, 0x99, 0xC7};
constexpr GptType kRecovery = {0xA4, 0xBB, 0x94, 0xDE, 0xD1, 0x06, 0x40, 0x4D,
                               0xA1, 0x6A, 0xBF, 0xD5, 0x01, 0x79, 0xD6, 0xAC};
constexpr GptType kLinux = {0xAF, 0x3D, 0xC6, 0x0F, 0x83, 0x84, 0x72, 0x47,
                            0x8E, 0x79, 0x3D, 0x69, 0xD8, 0x47, 0x7D, 0xE4};
constexpr GptType kStrange = {1, 2, 3};

// Partition n begins at n GB.
TableEntry Mbr(std::uint32_t number, std::uint8_t type, bool active = false) {
  return {number, number * kGB, 500 * kMB, type, active, {}};
}

TableEntry Gpt(std::uint32_t number, const GptType& type, std::uint64_t bytes = 500 * kMB) {
  return {number, number * kGB, bytes, 0, false, type};
}

using Lines = std::vector<std::string>;

TEST(SizeText, IsInGigabytesFromOneOnAndCutOff) {
  const std::pair<std::uint64_t, const char*> cases[] = {
      {0, "0.00MB"},
      {kMB / 2, "0.50MB"},
      {800 * kMB, "800.00MB"},
      {kGB - 1, "1023.99MB"},
      {kGB, "1.00GB"},
      {kGB + kGB / 50, "1.01GB"},  // 1.02 would be more than there is
      {500107862016, "465.76GB"},
      {2000398934016, "1863.01GB"},
      {~0ull, "17179869183.99GB"}};
  for (const auto& [bytes, text] : cases) EXPECT_EQ(SizeText(bytes), text) << bytes;
}

TEST(PartitionLines, ListAGptDiskInTableOrder) {
  const Disk disk{0,
                  PartitionStyle::kGpt,
                  "Example SSD",
                  {Gpt(1, kEfi, 100 * kMB), Gpt(2, kMsr, 16 * kMB), Gpt(3, kBasic, 465 * kGB),
                   Gpt(4, kRecovery), Gpt(5, kLinux), Gpt(6, kStrange), Gpt(0, GptType{})}};
  const std::vector<Volume> volumes = {{{{0, 3 * kGB, kGB}}, "C:", "NTFS", "System"},
                                       {{{0, kGB, kMB}}, "", "FAT32", "ESP"}};
  EXPECT_EQ(PartitionLines({disk}, volumes),
            (Lines{"1:1\t\t100.00MB\tFAT32\tEFI\tExample SSD\tESP\tGPT\t0",
                   "1:2\t\t16.00MB\t\tMSR\tExample SSD\t\tGPT\t0",
                   "1:3\tC:\t465.00GB\tNTFS\tPrimary\tExample SSD\tSystem\tGPT\t0",
                   "1:4\t\t500.00MB\t\tRecovery\tExample SSD\t\tGPT\t0",
                   "1:5\t\t500.00MB\t\tLinux\tExample SSD\t\tGPT\t0",
                   "1:6\t\t500.00MB\t\tOther\tExample SSD\t\tGPT\t0"}));
}

TEST(PartitionLines, TellLogicalDrivesFromPrimaryOnesAndSkipTheirFrames) {
  const Disk disk{2,
                  PartitionStyle::kMbr,
                  "",
                  {Mbr(1, 0x07, true), Mbr(2, 0x27), Mbr(3, 0x27, true), Mbr(0, 0x0F),  // the table
                   Mbr(4, 0x0B), Mbr(0, 0x05), Mbr(0, 0x00), Mbr(0, 0x00),              // the chain
                   Mbr(5, 0x42), Mbr(6, 0xEF), Mbr(0, 0x85), Mbr(7, 0xEE)}};
  const std::string rest = "500.00MB\t\t";
  EXPECT_EQ(
      PartitionLines({disk}, {}),
      (Lines{"3:1\t\t" + rest + "Primary\t\t\tMBR\t1", "3:2\t\t" + rest + "Recovery\t\t\tMBR\t0",
             "3:3\t\t" + rest + "Primary\t\t\tMBR\t1", "3:4\t\t" + rest + "Logical\t\t\tMBR\t0",
             "3:5\t\t" + rest + "Dynamic\t\t\tMBR\t0", "3:6\t\t" + rest + "EFI\t\t\tMBR\t0"}));
}

TEST(PartitionLines, MatchVolumesByPlaceAndStayWholeWhateverALabelHolds) {
  const Disk first{0, PartitionStyle::kMbr, "a\tb\r\n", {Mbr(1, 0x07), Mbr(2, 0x42)}};
  const Disk stick{1, PartitionStyle::kMbr, "B", {Mbr(0, 0x0C)}};  // formatted as a whole
  const std::vector<Volume> volumes = {
      {{{1, 0, kMB}}, "E:", "NTFS", "x\ty\nz\x7F\xC3\xA9"},
      {{{1, 0, kMB}}, "F:", "NTFS", "again"},  // a second letter
      {{{0, 2 * kGB + kMB, kMB}, {1, kMB, kMB}}, "G:", "NTFS", "spanned"},
      {{{0, 2 * kGB + 9 * kMB, kMB}}, "", "NTFS", "not beside a letter"},
      {{{0, 3 * kGB, kMB}}, "H:", "NTFS", "behind the last"}};
  EXPECT_EQ(PartitionLines({first, stick}, volumes),
            (Lines{"1:1\t\t500.00MB\t\tPrimary\ta b  \t\tMBR\t0",
                   "1:2\tG:\t500.00MB\tNTFS\tDynamic\ta b  \tspanned\tMBR\t0",
                   "2:1\tE:\t500.00MB\tNTFS\tPrimary\tB\tx y z \xC3\xA9\tMBR\t0",
                   "2:1\tF:\t500.00MB\tNTFS\tPrimary\tB\tagain\tMBR\t0",
                   "2:1\tG:\t500.00MB\tNTFS\tPrimary\tB\tspanned\tMBR\t0"}));
}

TEST(ModelText, JoinsMakerAndProductWithoutPadding) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"Kingston", "DataTraveler 3.0", "Kingston DataTraveler 3.0"},
      {"ATA     ", "  SAMPLE 500GB   ", "SAMPLE 500GB"},
      {"NVMe", "SAMPLE 1TB\t", "SAMPLE 1TB"},
      {"", "SAMPLE", "SAMPLE"},
      {"Maker   ", "", "Maker"},
      {"", "   ", ""}};
  for (const auto& [vendor, product, text] : cases) EXPECT_EQ(ModelText(vendor, product), text);
}

}  // namespace pavoline
