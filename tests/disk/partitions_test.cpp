#include "disk/partitions.h"

#include <gtest/gtest.h>

#include "disk/lent_letter.h"
#include "platform/text.h"
#include "support/workshop.h"

namespace pavoline::testing {

// As the partition lister writes it.
constexpr char kListing[] =
    "1:1\t\t499.00MB\tFAT32\tEFI\tSamsung SSD\tSYSTEM\tGPT\t0\r\n"
    "1:2\tD:\t465.76GB\tNTFS\tPrimary\tSamsung SSD\tData 1:2\tGPT\t0\r\n"
    "1:3\tS:\t100.00MB\tFAT32\tEFI\tSamsung SSD\tESP\tGPT\t0\r\n"
    "2:1\tE:\t30.00GB\tNTFS\tPrimary\tST1000\tBoot\tMBR\t1\r\n"
    "2:2\tU:\t14.90GB\tFAT32\tPrimary\tStick\tUSB\tMBR\t1\r\n";

constexpr auto kInstall = PartitionListKind::kInstall, kBoot = PartitionListKind::kBoot;

struct Partitions : ::testing::Test, Workshop {
  Partitions() {
    files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
    drives.add("S:", kDriveFixed, VolumePosition{1, 3});
    drives.add("U:", kDriveRemovable);
    processes.onStart("CxDir.exe", [this](ToolRun& run) {
      run.print(100, listings.front());
      if (listings.size() > 1) listings.erase(listings.begin());
    });
    list(kListing);
  }
  // Lists what the lister gives, of several the next at each run and the last for ever.
  bool list(const std::string& first, const std::vector<std::string>& others = {}) {
    listings = others;
    listings.insert(listings.begin(), first);
    processes.ran.clear();
    return GetPart(session);
  }
  // The letters of the chooser's rows, one after the other.
  std::string offered(PartitionListKind kind) {
    FillPartitionList(session, kind);
    std::string letters;
    const auto& rows = kind == kInstall ? session.installRows : session.bootRows;
    for (const PartitionEntry& row : rows) letters += row.drive;
    return letters;
  }

  std::vector<std::string> listings;
};

TEST_F(Partitions, AreListedByTheToolWhoseEmptyListIsBelievedTheSecondTime) {
  EXPECT_EQ(processes.ran.at(0),
            "\"X:\\Pavoline\"\\Bin\\CxDir\\x64\\CxDir.exe -vaskor >C:\\Windows\\temp\\GetPart.log");
  EXPECT_FALSE(files.exists("C:\\Windows\\temp\\GetPart.log"));
  processes.failNextStarts = 1;
  EXPECT_TRUE(GetPart(session));
  processes.failNextStarts = 2;
  EXPECT_FALSE(GetPart(session));
  EXPECT_EQ(session.partitions.size(), 5u);
  EXPECT_TRUE(list("", {kListing}));
  EXPECT_EQ(session.partitions.size(), 5u);
  EXPECT_EQ(processes.ran.size(), 2u);
  EXPECT_FALSE(list(""));
  EXPECT_TRUE(session.partitions.empty());
  EXPECT_EQ(processes.ran.size(), 2u);
}

TEST_F(Partitions, AreReaddressedForLaterGhostPrograms) {
  drives.add("D:", kDriveFixed, VolumePosition{3, 4});
  drives.add("S:");
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"", "1:2\tD:\tlabel 1:2", "3:4\tD:\tlabel 3:4"},
      {"12.0.0.10518", "1:2\tD:", "3:4\tD:"},
      {"12.0.0.10517", "1:2\tD:", "1:2\tD:"},
      {"", "12\tD:", "12\tD:"},     // no address
      {"", "1:2\tS:", "1:2\tS:"}};  // on no partition
  for (const auto& [version, line, expected] : cases) {
    files.version("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", version);
    list(std::string("\r\n") + line + "\n");
    ASSERT_EQ(session.partitions.size(), 1u);
    EXPECT_EQ(session.partitions[0].line, expected) << version;
  }
}

TEST(PartitionFilters, TellWhatAPartitionIsFor) {
  const std::tuple<std::string, bool, bool> cases[] = {
      {"1863.02GB\tNTFS\tPrimary\tm\tl\tGPT\t0", true, false},
      {"1.01GB\tNTFS\tLogical\tm\tl\tMBR\t0", true, false},
      {"1GB\tNTFS\tPrimary\tm\tl\tMBR\t1", false, true},
      {"20GB\tFAT32\tEFI\tm\tl\tGPT\t0", false, true},
      {"20GB\tFAT32\tEFI\tm\tl\tMBR\t1", false, false},
      {"20GB\tNTFS\tPrimary\tm", false, false},
      {"", false, false}};
  for (const auto& [facts, install, boot] : cases) {
    const PartitionEntry entry{facts.empty() ? "" : "1:1\tD:\t" + facts};
    EXPECT_EQ(IsInstallCandidate(entry), install) << facts;
    EXPECT_EQ(IsBootCandidate(entry), boot) << facts;
  }
}

TEST_F(Partitions, FillTheChoosersRows) {
  EXPECT_EQ(offered(kInstall), "D:E:");
  EXPECT_EQ(offered(kBoot), "S:E:");  // no letter, no choice
  EXPECT_EQ(session.installRows[0].label, "Data 1:2");
  session.options.usbPartition = true;
  EXPECT_EQ(offered(kInstall), "D:E:U:");

  for (std::size_t cut = 0; kListing[cut] != 0; ++cut) {
    list(std::string(kListing, cut));
    EXPECT_TRUE(std::string("S:E:U:").starts_with(offered(kBoot))) << cut;
  }
  drives.add("X:", kDriveFixed, VolumePosition{1, 9});  // the program's own disk comes last
  EXPECT_EQ(offered(kBoot), "E:U:S:");
}

TEST_F(Partitions, TheBootPartitionIsOnTheInstallPartitionsDiskAndBothAreDescribed) {
  for (const auto& [install, boot, bootFacts] :
       {std::tuple{"D:", "S:", "VolumeFacts ESP 100.00MB FAT32 Samsung SSD"},
        std::tuple{"E:", "E:", "VolumeFacts Boot 30.00GB NTFS ST1000"}}) {
    form.text[kInstallPartition].setText(install);
    form.text[kBootPartition].setText("");
    EXPECT_TRUE(RefreshPartitions(session));
    EXPECT_EQ(form.text[kBootPartition].text(), boot);
    EXPECT_EQ(form.facts[kBootPartition].text(), bootFacts);
  }
  list("2:1\te:\t30.00GB\tNTFS\tPrimary\tE:%label%\t\tMBR\t1\r\n");
  EXPECT_EQ(DescribeVolume(session, "E:"), "VolumeFacts NoLabel 30.00GB NTFS E:NoLabel");
  EXPECT_EQ(DescribeVolume(session, "D:"), "");
  list(kListing);
  TextBox& field = form.text[kInstallPartition];  // what it names stays when it is offered
  for (const auto& [typed, expected] : {std::pair{"e:\\", "E:"}, {"Z:", "D:"}, {"", "D:"}}) {
    field.setText(typed);
    FillPartitionList(session, kInstall);
    EXPECT_EQ(field.text(), expected) << typed;
  }
}

TEST_F(Partitions, ALetterIsLentToTheOneBootPartitionWithoutAndTakenBack) {
  list("1:3\tS:\t100.00MB\tFAT32\tEFI\tm\tESP\tGPT\t0\r\n");
  EXPECT_FALSE(FindLetterlessBoot(session, "S:"));  // has one already
  list(ReplaceAll(kListing, "S:", ""));
  EXPECT_FALSE(FindLetterlessBoot(session, "D:"));  // which of two?
  list(ReplaceAll(kListing, "S:\t100.00MB\tFAT32\tEFI", "S:\t2.00GB\tNTFS\tPrimary"));
  for (const char* none : {"E:", "Q:", ""}) EXPECT_FALSE(FindLetterlessBoot(session, none));
  const auto boot = FindLetterlessBoot(session, "D:");
  ASSERT_TRUE(boot);
  drives.refusesLetters = true;
  EXPECT_FALSE(LendLetter(session, *boot));
  TakeLetterBack(session);
  drives.refusesLetters = false;
  drives.letterless = {{1, 1}};
  for (const char* field : {"V:", "S:"}) {
    EXPECT_TRUE(LendLetter(session, *boot));
    EXPECT_EQ(form.text[kBootPartition].text(), "V:");
    form.text[kBootPartition].setText(field);  // somebody may have chosen another
    for (int times = 0; times < 2; ++times) TakeLetterBack(session);
    EXPECT_EQ(form.text[kBootPartition].text(), std::string(field) == "V:" ? "" : "S:");
  }
  EXPECT_EQ(drives.letterCalls,
            (std::vector<std::string>{"assign V: 1 1", "assign V: 1 1",
                                      "remove V:", "assign V: 1 1", "remove V:"}));
}

}  // namespace pavoline::testing
