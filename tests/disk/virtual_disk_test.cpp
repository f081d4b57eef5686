// Texts of virtual disks; what becomes of them is tried in their windows.
#include "disk/virtual_disk.h"

#include <gtest/gtest.h>

namespace pavoline::testing {

TEST(VirtualDiskTexts, TurnSizesIntoMegabytes) {
  constexpr auto kMb = SizeUnit::kMegabytes, kGb = SizeUnit::kGigabytes, kTb = SizeUnit::kTerabytes;
  constexpr auto kNone = SizeFault::kNone, kLarge = SizeFault::kTooLarge, kNo = SizeFault::kNoSize;
  const std::tuple<const char*, SizeUnit, SizeFault, int> sizes[] = {
      {" 100 ", kMb, kNone, 100},
      {"1.5", kGb, kNone, 1536},
      {"1.6", kMb, kNone, 2},
      {"2147483647", kMb, kNone, 2147483647},
      {"999", kTb, kNone, 1047527424},
      {"1000", kTb, kLarge, 0},
      {"2147483648", kMb, kLarge, 0},
      {"99999999999999999999999999", kGb, kLarge, 0},
      {"0.2", kMb, kNo, 0},
      {"-5000", kTb, kNo, 0},
      {"1e9", kMb, kNo, 0},
      {"٣", kGb, kNo, 0},
      {"", kGb, kNo, 0},
      {"10 GB", kGb, kNo, 0}};
  for (const auto& [text, unit, fault, megabytes] : sizes) {
    const VirtualDiskSize size = VirtualDiskMegabytes(text, unit);
    EXPECT_EQ(size.fault, fault) << text;
    EXPECT_EQ(fault == kNone ? size.megabytes : 0, megabytes) << text;
  }
}

TEST(VirtualDiskTexts, ChooseALetterAndTheExtension) {
  EXPECT_EQ(GetULetter("C:,D:,V:,Z:,"), "Y");
  EXPECT_EQ(GetULetter("G:,H:,I:,J:,K:,L:,M:,N:,O:,P:,Q:,R:,S:,T:,V:,W:,Y:,Z:,"), "");
  EXPECT_EQ(WithVirtualDiskExtension("D:\\DATA.VHDX", VirtualDiskFormat::kVhd), "D:\\DATA.VHD");
  EXPECT_EQ(WithVirtualDiskExtension("D:\\a.img", VirtualDiskFormat::kVhdx), "D:\\a.img.vhdx");
}

TEST(VirtualDiskTexts, WriteTheCreationScript) {
  const std::pair<const char*, std::string> labels[] = {{"WIN", " LABEL=WIN"},
                                                        {"", ""},
                                                        {"\"\r\n", ""},
                                                        {"My disk", " LABEL=\"My disk\""},
                                                        {"a\"\r\nclean\r\n", " LABEL=aclean"}};
  for (const auto& [label, written] : labels) {
    EXPECT_EQ(CreateScript("D:\\a b.vhd", 2048, VirtualDiskType::kExpandable, label, "V"),
              "Create vdisk file=\"D:\\a b.vhd\" maximum 2048 type=Expandable\r\n"
              "Select vdisk file=\"D:\\a b.vhd\"\r\nAttach vdisk\r\nCreate partition primary\r\n"
              "Format FS=NTFS" +
                  written + " quick\r\nAssign letter=V\r\nExit");
  }
}

}  // namespace pavoline::testing
