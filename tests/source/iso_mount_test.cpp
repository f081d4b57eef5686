#include "source/iso_mount.h"

#include <gtest/gtest.h>

#include "source_shop.h"

namespace pavoline::testing {

constexpr std::uint64_t kGigabyte = std::uint64_t{1} << 30;

// "imdisk -a" brings up the next of F:, G:, … with the image given for it.
struct IsoMount : ::testing::Test, SourceShop {
  IsoMount() {
    files.put("C:\\Windows\\system32\\drivers\\imdisk.sys");
    for (const char* name : {"D:\\a b.iso", "D:\\two.iso", "D:\\other.wim"}) files.put(name);
    processes.onStart("imdisk.exe -a", [this](ToolRun& run) {
      enabledDuringMount = form.combo1.enabled();
      run.does(200, [this] {
        drives.add(next, kDriveCdRom);
        if (!content.empty()) files.sized(next + content, kGigabyte);
      });
      run.print(200, "Creating device...\r\nCreated device 0: " + next + " -> D:\\x.iso\r\n");
    });
  }

  void mounts(const std::string& drive, const std::string& file) { next = drive, content = file; }

  std::string next = "F:", content = "\\sources\\install.wim";
  bool enabledDuringMount = true;
};

TEST_F(IsoMount, TheImageOnTheDriveBecomesTheSource) {
  form.combo1.setText("F:\\sources\\install.wim");  // typed before the drive is there
  files.put("F:\\sources\\install.esd");
  SourceDropped(session, {"D:\\a b.iso"});
  EXPECT_EQ(processes.ran.at(0), "imdisk.exe -a -m #: -f \"" + files.shortPath("D:\\a b.iso") +
                                     "\" >C:\\Windows\\temp\\LoadISO.log");
  EXPECT_FALSE(enabledDuringMount || enabledDuringRun);
  EXPECT_EQ(source(), "F:\\sources\\install.wim");
  EXPECT_EQ(editionCount(), 3u);
  EXPECT_EQ(session.mountedIsoDrive + session.mountedIsoFile, "F:D:\\a b.iso");
  EXPECT_TRUE(form.combo1.enabled() && dialogs.messages.empty());
  EXPECT_FALSE(files.exists("C:\\Windows\\temp\\LoadISO.log"));

  mounts("G:", "\\sources\\install.esd");  // read before the first is dismounted
  files.put("G:\\sources\\install.swm");
  form.combo1.setText("D:\\two.iso");
  EXPECT_EQ(source(), "G:\\sources\\install.esd");
  EXPECT_EQ(processes.ran.back(), "C:\\Windows\\System32\\cmd.exe /c imdisk.exe -D -m F:");
  EXPECT_TRUE(Contains(processes.ran.rbegin()[1], "install.esd"));
  mounts("H:", "\\sources\\install.swm");
  form.combo1.setText("D:\\a b.iso");
  EXPECT_EQ(source(), "H:\\sources\\install.swm");
  session.search.stop = true;  // left by an earlier search
  drives.remove("H:");         // dismounted by hand: the new drive gets its letter and stays
  mounts("H:", "\\x86\\sources\\y\\deep.wim");
  form.combo1.setText("D:\\two.iso");
  EXPECT_EQ(source(), "H:\\x86\\sources\\y\\deep.wim");
  EXPECT_FALSE(processes.ranLike("-D -m H:"));
}

TEST_F(IsoMount, OneThatFailsOrHoldsNoImageLeavesTheEarlierSource) {
  form.combo1.setText("D:\\a b.iso");
  mounts("G:", "\\readme.wim_");
  SourceDropped(session, {"D:\\two.iso"});  // the person chooses no other file
  EXPECT_EQ(processes.ran.back(), "C:\\Windows\\System32\\cmd.exe /c imdisk.exe -D -m G:");
  processes.onStart("imdisk.exe -a", [](ToolRun& run) { run.print(10, "Error\r\n"); });
  SourceDropped(session, {"D:\\two.iso"});
  processes.onStart("imdisk.exe -a", [](ToolRun& run) {
    run.print(100, "Created device 0: H: -> x");  // gone again before it is read
  });
  SourceDropped(session, {"D:\\two.iso"});
  EXPECT_EQ(heard(),
            (std::vector<std::string>{"NoImageInIso|Information|64", "MountFailed|Error|16"}));
  EXPECT_EQ(session.mountedIsoDrive + source(), "F:F:\\sources\\install.wim");

  time.after(50, [this] { form.combo1.setText("D:\\other.wim"); });  // is read all the same
  editions = "Other";
  SourceDropped(session, {"D:\\two.iso"});
  EXPECT_EQ(edition(), "Other  64-Bit");
}

TEST_F(IsoMount, WithoutAnImageThePersonMayChooseAnother) {
  mounts("F:", "");
  dialogs.files = {"D:\\other.wim"};
  MountIso(session, "D:\\two.iso");
  EXPECT_EQ(dialogs.openRequests.at(0).filters.back().patterns, "*.swm");
  EXPECT_EQ(session.mountedIsoDrive + source(), "F:D:\\other.wim");
}

TEST_F(IsoMount, AMissingDriverIsInstalledFirst) {
  session.paths.appDir = "X:\\a&b";
  files.drop("C:\\Windows\\system32\\drivers\\imdisk.sys");
  MountIso(session, "D:\\two.iso");
  EXPECT_EQ(processes.started.at(0).command,
            "C:\\Windows\\System32\\cmd.exe /c %SystemRoot%\\system32\\rundll32.exe "
            "setupapi.dll,InstallHinfSection DefaultInstall 132 X:\\a^&b\\Bin\\imdisk\\imdisk.inf");
}

TEST_F(IsoMount, AnIsoInTheIsoIsTheSourceUntilBothAreDismounted) {
  mounts("F:", "\\x\\inner.iso");
  processes.onStart("inner.iso", [this](ToolRun& run) {
    drives.add("G:", kDriveCdRom);
    files.sized("G:\\sources\\install.wim", kGigabyte);
    run.print(10, "Created device 1: G: -> F:\\x\\inner.iso");
  });
  SourceDropped(session, {"D:\\two.iso"});
  EXPECT_EQ(source(), "G:\\sources\\install.wim");
  EXPECT_EQ(session.mountedIsoDrive + session.mountedIsoFile, "G:F:\\x\\inner.iso");
  ASSERT_EQ(session.outerIsos.size(), 1u);
  EXPECT_EQ(session.outerIsos[0].drive + session.outerIsos[0].file, "F:D:\\two.iso");
  EXPECT_FALSE(processes.ranLike("-D -m"));
  mounts("H:", "\\sources\\install.wim");
  SourceDropped(session, {"D:\\a b.iso"});
  EXPECT_TRUE(processes.ranLike("-D -m F:") && processes.ranLike("-D -m G:"));
  EXPECT_TRUE(session.outerIsos.empty() && session.mountedIsoDrive == "H:");
}

TEST_F(IsoMount, AClosedWindowLeavesNoDriveBehind) {
  mounts("F:", "");
  dialogs.onMessage = [this](const auto&) { form.unload(); };
  form.combo1.setText("D:\\a b.iso");
  EXPECT_TRUE(dialogs.openRequests.empty() && processes.ranLike("-D -m F:"));
  EXPECT_EQ(form.focused(), nullptr);
}

}  // namespace pavoline::testing
