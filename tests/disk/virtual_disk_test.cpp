// Texts of virtual disks; what becomes of them is tried in their windows.
#include "disk/virtual_disk.h"

#include <gtest/gtest.h>

namespace pavoline::testing {

TEST(VirtualDiskTexts, TurnSizesIntoMegabytes) {
  constexpr auto kMb = SizeUnit::kMegabytes, kGb = SizeUnit::kGigabytes, kTb = SizeUnit::kTerabytes;
  constexpr auto kNone = SizeFault::kNone, kLarge = SizeFault::kTooLarge, kNo = SizeFault::kNoSize;
  const std::tuple<const char*, SizeUnit, SizeFault, int> sizes[] = {
      {" 100 ", kMb, kNone, 100},
      {"1.6", kMb, kNone, 2},
      {"2147483647", kMb, kNone, 2147483647},
      {"1000", kTb, kLarge, 0},
      {"99999999999999999999999999", kGb, kLarge, 0},
      {"-5000", kTb, kNo, 0},
      {"1e9", kMb, kNo, 0},
      {"٣", kGb, kNo, 0},
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

TEST(VirtualDiskTexts, KeepALabelWithinItsLine) {
  for (const auto& [label, written] : {std::pair{"", "FS=NTFS quick"},
                                       {"My disk", "FS=NTFS LABEL=\"My disk\" quick"},
                                       {"a\"\r\nclean\r\n", "FS=NTFS LABEL=aclean quick"}}) {
    const auto script = CreateScript("D:\\a.vhd", 64, VirtualDiskType::kFixed, label, "V");
    EXPECT_NE(script.find(std::string("\r\nFormat ") + written + "\r\n"), std::string::npos);
  }
}

}  // namespace pavoline::testing
