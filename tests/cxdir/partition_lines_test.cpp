#include "cxdir/partition_lines.h"

#include <gtest/gtest.h>

namespace pavoline {

constexpr std::uint64_t kMB = 1ull << 20;
constexpr std::uint64_t kGB = 1ull << 30;

// Partition n begins at n GB.
TableEntry Mbr(std::uint32_t number, std::uint8_t type, bool active = false) {
  return {number, number * kGB, 500 * kMB, type, active, {}};
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

}  // namespace pavoline
