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

TEST(MountLog, NamesTheDrive) {
  const std::pair<std::string, std::string> cases[] = {
      {"Creating device...\r\nCreated device 0: F: -> C:\\X.iso\r\n", "F:"},
      {"Creating device...\r\nError: -> no", ""},
      {" -> Created device ", ""},
      {"", ""}};
  for (const auto& [log, drive] : cases) {
    EXPECT_EQ(MountedDrive(log), drive) << log;
    for (std::size_t cut = 0; cut < log.size(); ++cut) {
      const std::string early = MountedDrive(log.substr(0, cut));
      EXPECT_TRUE(early.empty() || early == drive) << log << " cut at " << cut;
    }
  }
}

TEST_F(IsoMount, TheImageOnTheDriveBecomesTheSource) {
  files.put("F:\\sources\\install.esd");
  time.after(100, [this] { EXPECT_EQ(source(), ""); });
  SourceDropped(session, {"D:\\a b.iso"});
  EXPECT_EQ(processes.ran.at(0), "imdisk.exe -a -m #: -f \"" + files.shortPath("D:\\a b.iso") +
                                     "\" >C:\\Windows\\temp\\LoadISO.log");
  EXPECT_FALSE(enabledDuringMount || enabledDuringRun);
  EXPECT_EQ(source(), "F:\\sources\\install.wim");
  EXPECT_EQ(editionCount(), 3u);
  EXPECT_EQ(session.mountedIsoDrive, "F:");
  EXPECT_EQ(session.mountedIsoFile, "D:\\a b.iso");
  EXPECT_TRUE(form.combo1.enabled() && dialogs.messages.empty());
  EXPECT_EQ(form.focused(), &form.combo[kEditions]);
  EXPECT_FALSE(files.exists("C:\\Windows\\temp\\LoadISO.log"));
}

TEST_F(IsoMount, AnotherIsoIsReadBeforeTheFirstIsDismounted) {
  form.combo1.setText("F:\\sources\\install.wim");  // typed before the drive is there
  MountIso(session, "D:\\a b.iso");
  EXPECT_EQ(editionCount(), 3u);
  EXPECT_EQ(session.mountedIsoDrive, "F:");
  mounts("G:", "\\sources\\install.esd");
  form.combo1.setText("D:\\two.iso");
  EXPECT_EQ(source(), "G:\\sources\\install.esd");
  EXPECT_EQ(session.mountedIsoDrive, "G:");
  EXPECT_EQ(processes.ran.back(), "C:\\Windows\\System32\\cmd.exe /c imdisk.exe -D -m F:");
  EXPECT_TRUE(Contains(processes.ran.rbegin()[1], "install.esd"));
  EXPECT_TRUE(form.combo1.enabled() && dialogs.messages.empty());
}

TEST_F(IsoMount, ASearchFindsImagesElsewhereOnTheDrive) {
  session.search.stop = true;  // left by an earlier search
  for (const char* path : {"\\big.gho", "\\x86\\sources\\y\\deep.wim"}) {
    mounts("F:", path);
    form.combo1.setText("D:\\a b.iso");
    EXPECT_EQ(source(), std::string("F:") + path);
    EXPECT_FALSE(session.search.takeFirst);
    EXPECT_EQ(files.currentFolder, "X:\\Pavoline");
    drives.remove("F:");
  }
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(IsoMount, WithoutAnImageThePersonIsAsked) {
  form.combo1.setText("D:\\a b.iso");
  mounts("G:", "\\readme.wim_");
  form.combo1.setText("D:\\two.iso");  // cancelled
  EXPECT_EQ(heard(), std::vector<std::string>{"S29|S8|64"});
  EXPECT_EQ(dialogs.openRequests.at(0).title, "S5");
  EXPECT_EQ(dialogs.openRequests[0].filters.at(0).description, "S6(*.wim;*.esd;*.gho)");
  EXPECT_EQ(processes.ran.back(), "C:\\Windows\\System32\\cmd.exe /c imdisk.exe -D -m G:");
  EXPECT_EQ(session.mountedIsoDrive, "F:");
  EXPECT_EQ(editionCount(), 0u);

  dialogs.files = {"D:\\other.wim"};
  MountIso(session, "D:\\two.iso");
  EXPECT_EQ(source(), "D:\\other.wim");
  EXPECT_EQ(editionCount(), 3u);
  EXPECT_EQ(session.mountedIsoDrive, "G:");
}

TEST_F(IsoMount, AFailedMountIsReportedAndLeavesTheEarlierSource) {
  form.combo1.setText("D:\\a b.iso");
  const std::size_t before = processes.ran.size();
  processes.onStart("imdisk.exe -a", [](ToolRun& run) { run.print(10, "Error\r\n"); });
  SourceDropped(session, {"D:\\two.iso"});
  EXPECT_EQ(heard(), std::vector<std::string>{"S28|S12|16"});
  EXPECT_EQ(processes.ran.size(), before + 1);
  EXPECT_EQ(session.mountedIsoDrive, "F:");
  EXPECT_EQ(source(), "F:\\sources\\install.wim");
  EXPECT_EQ(editionCount(), 3u);

  processes.onStart("imdisk.exe -a", [](ToolRun& run) {
    run.print(100, "Created device 0: H: -> x");  // gone again before it is read
  });
  time.after(50, [this] { form.combo1.setText("D:\\other.wim"); });  // is read all the same
  editions = "Other";
  SourceDropped(session, {"D:\\two.iso"});
  EXPECT_EQ(edition(), "Other  64-Bit");
  EXPECT_EQ(dialogs.messages.size(), 1u);
  EXPECT_EQ(session.mountedIsoDrive, "F:");
}

TEST_F(IsoMount, AMissingDriverIsInstalledFirst) {
  for (const char* file :
       {"C:\\Windows\\system32\\drivers\\imdisk.sys", "C:\\Windows\\system32\\imdisk.exe"}) {
    files.drop(file);
    processes.started.clear();
    MountIso(session, "D:\\two.iso");
    ASSERT_FALSE(processes.started.empty());
    EXPECT_EQ(processes.started[0].command,
              "C:\\Windows\\System32\\cmd.exe /c %SystemRoot%\\system32\\rundll32.exe "
              "setupapi.dll,InstallHinfSection DefaultInstall 132 "
              "X:\\Pavoline\\Bin\\imdisk\\imdisk.inf");
    EXPECT_EQ(processes.started[0].mode, ShowMode::kHidden);
    files.put(file);
  }
}

TEST_F(IsoMount, ADriveThatGotTheOldLetterStaysMounted) {
  form.combo1.setText("D:\\a b.iso");
  drives.remove("F:");  // dismounted by hand
  form.combo1.setText("D:\\two.iso");
  EXPECT_EQ(session.mountedIsoFile, "D:\\two.iso");
  EXPECT_FALSE(processes.ranLike("-D -m"));
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
  EXPECT_EQ(session.mountedIsoDrive, "G:");
  EXPECT_EQ(session.mountedIsoFile, "F:\\x\\inner.iso");
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
