// Texts of virtual disks; what becomes of them is tried in their windows.
#include "disk/virtual_disk.h"

#include <gtest/gtest.h>

namespace pavoline::testing {

TEST(VirtualDiskTexts, GiveTheExtensionOfTheFormat) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"D:\\data.vhd", "D:\\data.vhd", "D:\\data.vhdx"},
      {"D:\\DATA.VHDX", "D:\\DATA.VHD", "D:\\DATA.VHDX"},
      {"D:\\DATA.VHD", "D:\\DATA.VHD", "D:\\DATA.VHDx"},
      {"D:\\a.img", "D:\\a.img.vhd", "D:\\a.img.vhdx"}};
  for (const auto& [file, vhd, vhdx] : cases) {
    EXPECT_EQ(WithVirtualDiskExtension(file, VirtualDiskFormat::kVhd), vhd);
    EXPECT_EQ(WithVirtualDiskExtension(file, VirtualDiskFormat::kVhdx), vhdx);
  }
}

TEST(VirtualDiskTexts, TurnSizesIntoMegabytes) {
  constexpr auto kMb = SizeUnit::kMegabytes, kGb = SizeUnit::kGigabytes, kTb = SizeUnit::kTerabytes;
  const std::tuple<const char*, SizeUnit, int> sizes[] = {
      {"2", kGb, 2048},         {"1", kMb, 1},        {" 100 ", kMb, 100},
      {"1.5", kGb, 1536},       {"1.6", kMb, 2},      {"2147483647", kMb, 2147483647},
      {"999", kTb, 1047527424}, {"1.5", kTb, 1572864}};
  for (const auto& [size, unit, megabytes] : sizes) {
    EXPECT_EQ(VirtualDiskMegabytes(size, unit).fault, SizeFault::kNone) << size;
    EXPECT_EQ(VirtualDiskMegabytes(size, unit).megabytes, megabytes) << size;
  }
  for (const auto& [size, unit] : {std::pair{"1000", kTb},
                                   {"2147483648", kMb},
                                   {"2097152", kGb},
                                   {"99999999999999999999999999", kGb}}) {
    EXPECT_EQ(VirtualDiskMegabytes(size, unit).fault, SizeFault::kTooLarge) << size;
  }
  for (const auto& [size, unit] : {std::pair{"0", kGb},
                                   {"0.2", kMb},
                                   {"-1", kGb},
                                   {"-5000", kTb},
                                   {"1e9", kMb},
                                   {"٣", kGb},
                                   {"", kGb},
                                   {"10 GB", kGb}}) {
    EXPECT_EQ(VirtualDiskMegabytes(size, unit).fault, SizeFault::kNoSize) << size;
  }
}

TEST(VirtualDiskTexts, ChooseALetter) {
  EXPECT_EQ(GetULetter(""), "V");
  EXPECT_EQ(GetULetter("C:,D:,V:,Z:,"), "Y");
  EXPECT_EQ(GetULetter("G:,H:,I:,J:,K:,L:,M:,N:,O:,P:,Q:,R:,S:,T:,V:,W:,Y:,Z:,"), "");
}

TEST(VirtualDiskTexts, RefuseNamesThatNoFileCanHave) {
  for (const char* name :
       {"", "a?", "a*b", "a:b", "a/b", "a\\b", "\"a\"", "a<b", "a>b", "a|b", "a\nb"}) {
    EXPECT_FALSE(IsVirtualDiskName(name)) << name;
  }
  for (const char* name : {"a b & 100%", "上.vhdx", "."}) EXPECT_TRUE(IsVirtualDiskName(name));
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
              "Select vdisk file=\"D:\\a b.vhd\"\r\n"
              "Attach vdisk\r\n"
              "Create partition primary\r\n"
              "Format FS=NTFS" +
                  written +
                  " quick\r\n"
                  "Assign letter=V\r\n"
                  "Exit");
  }
}

}  // namespace pavoline::testing
