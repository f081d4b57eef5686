#include "disk/virtual_disk.h"

#include <gtest/gtest.h>

#include "support/workshop.h"

namespace pavoline::testing {
namespace {

TEST(VirtualDiskTexts, GiveTheExtensionOfTheFormat) {
  const struct {
    const char *file, *vhd, *vhdx;
  } cases[] = {
      {"D:\\data.vhd", "D:\\data.vhd", "D:\\data.vhdx"},
      {"D:\\data.vhdx", "D:\\data.vhd", "D:\\data.vhdx"},
      {"D:\\DATA.VHD", "D:\\DATA.VHD", "D:\\DATA.VHDx"},
      {"D:\\DATA.VHDX", "D:\\DATA.VHD", "D:\\DATA.VHDX"},
      {"D:\\data", "D:\\data.vhd", "D:\\data.vhdx"},
      {"D:\\a.img", "D:\\a.img.vhd", "D:\\a.img.vhdx"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(WithVirtualDiskExtension(c.file, VirtualDiskFormat::kVhd), c.vhd);
    EXPECT_EQ(WithVirtualDiskExtension(c.file, VirtualDiskFormat::kVhdx), c.vhdx);
  }
}

TEST(VirtualDiskTexts, TurnSizesIntoMegabytes) {
  constexpr auto kMb = SizeUnit::kMegabytes, kGb = SizeUnit::kGigabytes, kTb = SizeUnit::kTerabytes;
  const struct {
    const char* size;
    SizeUnit unit;
    SizeFault fault;
    int megabytes;
  } cases[] = {
      {"2", kGb, SizeFault::kNone, 2048},
      {"100", kMb, SizeFault::kNone, 100},
      {" 100 ", kMb, SizeFault::kNone, 100},
      {"1.5", kGb, SizeFault::kNone, 1536},
      {"1.6", kMb, SizeFault::kNone, 2},
      {"999", kTb, SizeFault::kNone, 1047527424},
      {"1.5", kTb, SizeFault::kNone, 1572864},
      {"1000", kTb, SizeFault::kTooLarge, 0},
      {"2147483647", kMb, SizeFault::kNone, 2147483647},
      {"2147483648", kMb, SizeFault::kTooLarge, 0},
      {"2097152", kGb, SizeFault::kTooLarge, 0},
      {"99999999999999999999999999", kGb, SizeFault::kTooLarge, 0},
      {"0", kGb, SizeFault::kNoSize, 0},
      {"0.2", kMb, SizeFault::kNoSize, 0},
      {"-1", kGb, SizeFault::kNoSize, 0},
      {"-5000", kTb, SizeFault::kNoSize, 0},
      {"1e9", kMb, SizeFault::kNoSize, 0},
      {"٣", kGb, SizeFault::kNoSize, 0},
      {"", kGb, SizeFault::kNoSize, 0},
      {"10 GB", kGb, SizeFault::kNoSize, 0},
      {"ten", kMb, SizeFault::kNoSize, 0},
  };
  for (const auto& c : cases) {
    const VirtualDiskSize size = VirtualDiskMegabytes(c.size, c.unit);
    EXPECT_EQ(size.fault, c.fault) << c.size;
    EXPECT_EQ(size.megabytes, c.megabytes) << c.size;
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
  for (const char* name : {"data.vhd", "a b & 100%", "上.vhdx", "."}) {
    EXPECT_TRUE(IsVirtualDiskName(name)) << name;
  }
}

TEST(VirtualDiskTexts, WriteTheCreationScript) {
  EXPECT_EQ(CreateScript("D:\\a b.vhd", 2048, VirtualDiskType::kExpandable, "WIN", "V"),
            "Create vdisk file=\"D:\\a b.vhd\" maximum 2048 type=Expandable\r\n"
            "Select vdisk file=\"D:\\a b.vhd\"\r\n"
            "Attach vdisk\r\n"
            "Create partition primary\r\n"
            "Format FS=NTFS LABEL=WIN quick\r\n"
            "Assign letter=V\r\n"
            "Exit");
  const std::pair<const char*, const char*> labels[] = {{"", "LABEL= quick"},
                                                        {"My disk", "LABEL=\"My disk\" quick"},
                                                        {"a\"\r\nclean\r\n", "LABEL=aclean quick"}};
  for (const auto& [label, line] : labels) {
    EXPECT_NE(CreateScript("f", 1, VirtualDiskType::kFixed, label, "V").find(line),
              std::string::npos)
        << label;
  }
}

struct VirtualDisk : ::testing::Test, Workshop {
  VirtualDisk() {
    processes.onStart("diskpart.exe /S", [this](ToolRun& run) {
      script = files.text("C:\\Windows\\temp\\vhd.txt");
      if (works) run.does(100, [this] { drives.add("V:"); });
    });
    request = {"D:\\disk",           VirtualDiskFormat::kVhd, "2",
               SizeUnit::kGigabytes, VirtualDiskType::kFixed, "WIN"};
  }
  std::string script;
  bool works = true;
  VirtualDiskRequest request;
};

TEST_F(VirtualDisk, IsAttached) {
  EXPECT_TRUE(AttachVirtualDisk(session, "D:\\a b.vhd"));
  EXPECT_EQ(script, "Select vdisk file=\"D:\\a b.vhd\"\r\nAttach vdisk\r\nExit\r\n");
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_EQ(dialogs.messages[0].text, "S83 D:\\a b.vhd");
  EXPECT_EQ(dialogs.messages[0].title, "S84");

  EXPECT_FALSE(AttachVirtualDisk(session, "D:\\a b.vhd"));  // no further letter
  EXPECT_EQ(dialogs.messages.back().text + dialogs.messages.back().title, "S82S8");
  EXPECT_EQ(dialogs.messages.back().flags, kInformationMessage);
}

TEST_F(VirtualDisk, IsDetached) {
  EXPECT_TRUE(DetachVirtualDisk(session, "D:\\a.vhd"));
  EXPECT_EQ(script, "Select vdisk file=\"D:\\a.vhd\"\r\nDetach vdisk\r\nExit\r\n");
  EXPECT_EQ(dialogs.messages.at(0).text, "S87 D:\\a.vhd");
  EXPECT_FALSE(DetachVirtualDisk(session, "D:\\a.vhd"));
  EXPECT_EQ(dialogs.messages.back().text, "S86");
  EXPECT_FALSE(DetachVirtualDisk(session, ""));
  EXPECT_EQ(processes.started.size(), 2u);
}

TEST_F(VirtualDisk, IsCreatedUnderAFreeLetter) {
  EXPECT_TRUE(CreateVirtualDisk(session, request));
  EXPECT_TRUE(script.starts_with("Create vdisk file=\"D:\\disk.vhd\" maximum 2048 type=Fixed"));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_EQ(dialogs.messages[0].text, "S108 WIN\r\nS109 V:");

  works = false;  // and the next letter does not come up
  EXPECT_FALSE(CreateVirtualDisk(session, request));
  EXPECT_NE(script.find("letter=Z"), std::string::npos);
  EXPECT_EQ(dialogs.messages.back().text + dialogs.messages.back().title, "S102");
}

TEST_F(VirtualDisk, IsRefusedWithTheFirstReason) {
  drives.add("E:", kDriveFixed, {}, (std::uint64_t{5} << 30) - 1);
  const struct {
    const char *file, *size;
    SizeUnit unit;
    const char* text;
  } cases[] = {
      {"D:\\none\\?", "x", SizeUnit::kGigabytes, "S105"},
      {"Q:\\a", "1", SizeUnit::kGigabytes, "S105"},
      {"a.vhd", "1", SizeUnit::kGigabytes, "S105"},
      {"Bin\\a.vhd", "1", SizeUnit::kGigabytes, "S105"},
      {"", "1", SizeUnit::kGigabytes, "S105"},
      {"E:\\", "x", SizeUnit::kGigabytes, "S100"},
      {"E:\\a?", "x", SizeUnit::kGigabytes, "S100"},
      {"E:\\a", "x", SizeUnit::kGigabytes, "S101"},
      {"E:\\a", "0", SizeUnit::kGigabytes, "S101"},
      {"E:\\a", "1000", SizeUnit::kTerabytes, "S106"},
      {"E:\\a", "5", SizeUnit::kGigabytes, "S107"},
      {"E:\\a", "999", SizeUnit::kTerabytes, "S107"},
  };
  for (const auto& c : cases) {
    request.file = c.file;
    request.size = c.size;
    request.unit = c.unit;
    EXPECT_FALSE(CreateVirtualDisk(session, request)) << c.file;
    EXPECT_EQ(dialogs.messages.back().text, c.text) << c.file;
    EXPECT_EQ(dialogs.messages.back().flags, kErrorMessage);
  }
  request.file = "E:\\a";
  request.size = "4";
  request.unit = SizeUnit::kGigabytes;
  for (const char letter : std::string("VZYWTSRQPONMLKJIHG"))
    drives.add(std::string(1, letter) + ":");
  EXPECT_FALSE(CreateVirtualDisk(session, request));
  EXPECT_EQ(dialogs.messages.back().text, "S104");
  EXPECT_TRUE(processes.started.empty());
}

TEST_F(VirtualDisk, RunsOneCommandAtATime) {
  time.after(50, [this] {
    EXPECT_FALSE(CreateVirtualDisk(session, request));
    EXPECT_FALSE(AttachVirtualDisk(session, "D:\\b.vhd"));
  });
  EXPECT_TRUE(AttachVirtualDisk(session, "D:\\a.vhd"));
  EXPECT_EQ(processes.started.size(), 1u);
}

}  // namespace
}  // namespace pavoline::testing
