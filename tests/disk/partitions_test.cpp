#include "disk/partitions.h"

#include <gtest/gtest.h>

#include "support/workshop.h"

namespace pavoline::testing {

// As the partition lister writes it.
constexpr char kListing[] =
    "1:1\t\t499.00MB\tFAT32\tEFI\tSamsung SSD\tSYSTEM\tGPT\t0\r\n"
    "1:2\tD:\t465.76GB\tNTFS\tPrimary\tSamsung SSD\tData 1:2\tGPT\t0\r\n"
    "1:3\tS:\t100.00MB\tFAT32\tEFI\tSamsung SSD\tESP\tGPT\t0\r\n"
    "2:1\tE:\t30.00GB\tNTFS\tPrimary\tST1000\tBoot\tMBR\t1\r\n"
    "2:2\tU:\t14.90GB\tFAT32\tPrimary\tStick\tUSB\tMBR\t1\r\n";

struct Partitions : ::testing::Test, Workshop {
  Partitions() {
    files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
    drives.add("S:");
    drives.add("U:", kDriveRemovable);
    lists(kListing);
  }
  void lists(const std::string& listing) {
    processes.onStart("CxDir.exe", [listing](ToolRun& run) { run.print(100, listing); });
  }
  // The letters of the chooser's rows, one after the other.
  std::string offered(PartitionListKind kind) {
    FillPartitionList(session, kind);
    std::string letters;
    const bool install = kind == PartitionListKind::kInstall;
    for (const PartitionRow& row : install ? session.installRows : session.bootRows) {
      EXPECT_EQ(row.columns.size(), 5u);
      letters += row.drive();
    }
    return letters;
  }
};

TEST_F(Partitions, AreListedByTheToolAndStayWhenItLeavesNoLog) {
  GetPart(session);
  EXPECT_EQ(processes.ran.at(0),
            "\"X:\\Pavoline\"\\Bin\\CxDir\\x64\\CxDir.exe -vaskor >C:\\Windows\\temp\\GetPart.log");
  EXPECT_FALSE(files.exists("C:\\Windows\\temp\\GetPart.log"));
  processes.failNextStarts = 1;
  GetPart(session);
  EXPECT_EQ(session.partitions.size(), 5u);
  lists("");
  GetPart(session);
  EXPECT_TRUE(session.partitions.empty());
}

TEST_F(Partitions, AreReaddressedForLaterGhostPrograms) {
  drives.add("D:", kDriveFixed, VolumePosition{3, 4});
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"", "1:2\tD:\tlabel 1:2", "3:4\tD:\tlabel 3:4"},
      {"12.0.0.10531", "1:2\tD:", "3:4\tD:"},
      {"12.0.0.10518", "1:2\tD:", "3:4\tD:"},
      {"12.0.0.10517", "1:2\tD:", "1:2\tD:"},
      {"11.5", "1:2\tD:", "3:4\tD:"},
      {"", "12\tD:", "12\tD:"},    // no address
      {"", "1:2\tS:", "1:2\tS:"},  // on no partition
      {"", "1:2\t", "1:2\t"},
      {"", "1:2", "1:2"}};
  for (const auto& [version, line, expected] : cases) {
    files.version("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", version);
    lists(std::string("\r\n") + line + "\n");
    GetPart(session);
    ASSERT_EQ(session.partitions.size(), 1u);
    EXPECT_EQ(session.partitions[0].line, expected) << version;
  }
}

TEST(PartitionFilters, TellWhatAPartitionIsFor) {
  const std::tuple<std::string, bool, bool> cases[] = {
      {"465.76GB\tNTFS\tPrimary\tm\tl\tGPT\t0", true, false},
      {"1.01GB\tNTFS\tLogical\tm\tl\tMBR\t0", true, false},
      {"1GB\tNTFS\tPrimary\tm\tl\tMBR\t1", false, true},
      {"1.00GB\tNTFS\tPrimary\tm\tl\tMBR\t0", false, false},
      {"0.5GB\tNTFS\tPrimary\tm\tl\tMBR\t0", false, false},
      {"800MB\tNTFS\tPrimary\tm\tl\tMBR\t1", false, true},
      {"1.50TB\tNTFS\tPrimary\tm\tl\tGPT\t1", false, false},
      {"20GB\tFAT32\tEFI\tm\tl\tGPT\t0", false, true},
      {"20GB\tFAT32\tEFI\tm\tl\tMBR\t1", false, false},
      {"20GB\tNTFS\tLogical\tm\tl\tMBR\t1", true, false},
      {"20GB\tNTFS\tPrimary\tm\tl", true, false},
      {"20GB\tNTFS\tPrimary\tm\tl\tMBR", true, false},
      {"20GB\tNTFS\tPrimary\tm", false, false},
      {"", false, false}};
  for (const auto& [facts, install, boot] : cases) {
    const PartitionEntry entry{facts.empty() ? "" : "1:1\tD:\t" + facts};
    EXPECT_EQ(IsInstallCandidate(entry), install) << facts;
    EXPECT_EQ(IsBootCandidate(entry), boot) << facts;
  }
}

TEST_F(Partitions, FillTheChoosersRows) {
  GetPart(session);
  EXPECT_EQ(offered(PartitionListKind::kInstall), "D:E:");
  EXPECT_EQ(offered(PartitionListKind::kBoot), "S:E:");  // no letter, no choice
  EXPECT_EQ(session.installRows[0].columns,
            (std::vector<std::string>{"D:", "Data 1:2", "Samsung SSD", "NTFS", "465.76GB"}));
  session.options.usbPartition = true;
  EXPECT_EQ(offered(PartitionListKind::kInstall), "D:E:U:");

  const std::string listing = kListing;
  for (std::size_t cut = 0; cut <= listing.size(); ++cut) {
    lists(listing.substr(0, cut));
    GetPart(session);
    offered(PartitionListKind::kInstall);
    EXPECT_TRUE(std::string("S:E:U:").starts_with(offered(PartitionListKind::kBoot))) << cut;
  }
  EXPECT_EQ(offered(PartitionListKind::kBoot), "S:E:U:");
}

TEST_F(Partitions, KeepTheLetterChosenBefore) {
  GetPart(session);
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"", "", "D:"},  {"E:", "", "E:"},  {"e:\\", "", "E:"}, {"Z:", "", "D:"},
      {"", "E", "E:"}, {"D:", "E", "D:"}, {"U:", "", "D:"}};
  TextBox& field = form.text[kInstallPartition];
  for (const auto& [typed, tag, expected] : cases) {
    field.setText(typed);
    field.setTag(tag);
    FillPartitionList(session, PartitionListKind::kInstall);
    EXPECT_EQ(field.text(), expected) << typed << tag;
  }
  session.partitions.clear();
  FillPartitionList(session, PartitionListKind::kInstall);
  EXPECT_EQ(field.text(), "");
}

}  // namespace pavoline::testing
