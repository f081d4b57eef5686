#include "disk/partitions.h"

#include <gtest/gtest.h>

#include "support/workshop.h"

namespace pavoline::testing {
namespace {

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
  std::vector<std::string> offered(const std::vector<PartitionRow>& rows) {
    std::vector<std::string> result;
    for (const PartitionRow& row : rows) result.push_back(row.drive());
    return result;
  }
};

using Letters = std::vector<std::string>;

TEST_F(Partitions, AreListedByTheTool) {
  GetPart(session);
  EXPECT_EQ(processes.ran.at(0),
            "\"X:\\Pavoline\"\\Bin\\CxDir\\x64\\CxDir.exe -vaskor >C:\\Windows\\temp\\GetPart.log");
  ASSERT_EQ(session.partitions.size(), 5u);
  EXPECT_FALSE(files.exists("C:\\Windows\\temp\\GetPart.log"));

  lists("");
  GetPart(session);
  EXPECT_TRUE(session.partitions.empty());
}

TEST_F(Partitions, StayListedWhenTheToolLeavesNoLog) {
  GetPart(session);
  processes.failNextStarts = 1;
  GetPart(session);
  EXPECT_EQ(session.partitions.size(), 5u);
}

TEST_F(Partitions, AreReaddressedForLaterGhostPrograms) {
  drives.add("D:", kDriveFixed, VolumePosition{3, 4});
  const struct {
    const char* version;
    const char* line;
    const char* expected;
  } cases[] = {
      {"", "1:2\tD:\tlabel 1:2", "3:4\tD:\tlabel 3:4"},
      {"12.0.0.10531", "1:2\tD:", "3:4\tD:"},
      {"12.0.0.10518", "1:2\tD:", "3:4\tD:"},
      {"12.0.0.10517", "1:2\tD:", "1:2\tD:"},
      {"11.5", "1:2\tD:", "3:4\tD:"},
      {"", "12\tD:", "12\tD:"},    // no address
      {"", "1:2\tS:", "1:2\tS:"},  // on no partition
      {"", "1:2\t", "1:2\t"},
      {"", "1:2", "1:2"},
  };
  for (const auto& c : cases) {
    files.version("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", c.version);
    lists(std::string("\r\n") + c.line + "\n");
    GetPart(session);
    ASSERT_EQ(session.partitions.size(), 1u);
    EXPECT_EQ(session.partitions[0].line, c.expected) << c.version;
  }
}

TEST(PartitionFilters, TellWhatAPartitionIsFor) {
  const struct {
    const char* line;
    bool install, boot;
  } cases[] = {
      {"1:1\tD:\t465.76GB\tNTFS\tPrimary\tm\tl\tGPT\t0", true, false},
      {"1:1\tD:\t1.01GB\tNTFS\tLogical\tm\tl\tMBR\t0", true, false},
      {"1:1\tD:\t1GB\tNTFS\tPrimary\tm\tl\tMBR\t1", false, true},
      {"1:1\tD:\t1.00GB\tNTFS\tPrimary\tm\tl\tMBR\t0", false, false},
      {"1:1\tD:\t0.5GB\tNTFS\tPrimary\tm\tl\tMBR\t0", false, false},
      {"1:1\tD:\t800MB\tNTFS\tPrimary\tm\tl\tMBR\t1", false, true},
      {"1:1\tD:\t1.50TB\tNTFS\tPrimary\tm\tl\tGPT\t1", false, false},
      {"1:1\tD:\t20GB\tFAT32\tEFI\tm\tl\tGPT\t0", false, true},
      {"1:1\tD:\t20GB\tFAT32\tEFI\tm\tl\tMBR\t1", false, false},
      {"1:1\tD:\t20GB\tNTFS\tLogical\tm\tl\tMBR\t1", true, false},
      {"1:1\tD:\t20GB\tNTFS\tPrimary\tm\tl", true, false},
      {"1:1\tD:\t20GB\tNTFS\tPrimary\tm\tl\tMBR", true, false},
      {"1:1\tD:\t20GB\tNTFS\tPrimary\tm", false, false},
      {"", false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(IsInstallCandidate({c.line}), c.install) << c.line;
    EXPECT_EQ(IsBootCandidate({c.line}), c.boot) << c.line;
  }
}

TEST_F(Partitions, FillTheChoosersRows) {
  GetPart(session);
  FillPartitionList(session, PartitionListKind::kInstall);
  FillPartitionList(session, PartitionListKind::kBoot);
  EXPECT_EQ(offered(session.installRows), (Letters{"D:", "E:"}));
  EXPECT_EQ(offered(session.bootRows), (Letters{"S:", "E:"}));  // no letter, no choice
  EXPECT_EQ(session.installRows[0].columns,
            (std::vector<std::string>{"D:", "Data 1:2", "Samsung SSD", "NTFS", "465.76GB"}));

  session.options.usbPartition = true;
  FillPartitionList(session, PartitionListKind::kInstall);
  FillPartitionList(session, PartitionListKind::kBoot);
  EXPECT_EQ(offered(session.installRows), (Letters{"D:", "E:", "U:"}));
  EXPECT_EQ(offered(session.bootRows), (Letters{"S:", "E:", "U:"}));
}

TEST_F(Partitions, KeepTheLetterChosenBefore) {
  GetPart(session);
  const struct {
    const char *text, *tag, *expected;
  } cases[] = {{"", "", "D:"},  {"E:", "", "E:"},  {"e:\\", "", "E:"}, {"Z:", "", "D:"},
               {"", "E", "E:"}, {"D:", "E", "D:"}, {"U:", "", "D:"}};
  TextBox& field = form.text[kInstallPartition];
  for (const auto& c : cases) {
    field.setText(c.text);
    field.setTag(c.tag);
    FillPartitionList(session, PartitionListKind::kInstall);
    EXPECT_EQ(field.text(), c.expected) << c.text << c.tag;
  }
  session.partitions.clear();
  FillPartitionList(session, PartitionListKind::kInstall);
  EXPECT_EQ(field.text(), "");
}

TEST_F(Partitions, SurviveAListingCutAnywhere) {
  const std::string listing = kListing;
  session.options.usbPartition = true;
  for (std::size_t cut = 0; cut <= listing.size(); ++cut) {
    lists(listing.substr(0, cut));
    GetPart(session);
    FillPartitionList(session, PartitionListKind::kInstall);
    FillPartitionList(session, PartitionListKind::kBoot);
    for (const auto& rows : {session.installRows, session.bootRows}) {
      for (const PartitionRow& row : rows) ASSERT_EQ(row.columns.size(), 5u) << cut;
    }
  }
  EXPECT_EQ(offered(session.bootRows), (Letters{"S:", "E:", "U:"}));
}

}  // namespace
}  // namespace pavoline::testing
