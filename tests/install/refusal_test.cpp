// What Start refuses, before anything is lost.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

using Spoil = std::function<void(Installer&)>;

Spoil InstallTo(const std::string& drive) {
  return [=](Installer& w) { w.form.text[kInstallPartition].setText(drive); };
}
Spoil BootFrom(const std::string& drive) {
  return [=](Installer& w) { w.form.text[kBootPartition].setText(drive); };
}
Spoil Source(const std::string& path) {
  return [=](Installer& w) {
    w.files.put(path, "image");
    w.form.combo1.setText(path);
  };
}
Spoil Row(CheckIndex box, const std::string& path, const std::string& bytes = "\xEF\xBB\xBF") {
  return [=](Installer& w) {
    w.files.put(path.substr(0, path.find(" /")), bytes);
    if (box == kRunPlugin) w.form.combo2.setText(path);
    if (box != kRunPlugin)
      w.form.text[box == kAddDrivers ? kDriverFolder : kAnswerFile].setText(path);
    w.form.check[box].setValue(1);
  };
}
Spoil Both(const Spoil& first, const Spoil& second) {
  return [=](Installer& w) { first(w), second(w); };
}
Spoil Drop(const std::string& path) {
  return [=](Installer& w) { w.files.drop(path); };
}

// The image lies in an ISO that lies in another, which lies on the target.
void MountTwice(Installer& w) {
  for (const char* drive : {"F:", "G:"}) w.drives.add(drive, kDriveCdRom);
  w.running().mountedIsoDrive = "F:";
  w.running().mountedIsoFile = "G:\\inner.iso";
  w.running().outerIsos = {{"G:", "e:\\outer.iso"}};
}

void Relative(Installer& w) {
  w.files.currentFolder = "E:\\";
  Source("win10.wim")(w);
}

void RunsFromTarget(Installer& w) {
  w.environment.variables["systemdrive"] = "C:";
  w.partitionLines += "3:1\tX:\t10.00GB\tNTFS\tPrimary\tStick\tUSB\tMBR\t0\r\n";
  InstallTo("X:")(w);
}

void HiddenBootStays(Installer& w) {
  w.partitionLines += "2:2\t\t100.00MB\tFAT32\tEFI\tDisk B\tSYSTEM\tGPT\t0\r\n";
  w.program->session().partitions.push_back(
      {"2:2\t\t100.00MB\tFAT32\tEFI\tDisk B\tSYSTEM\tGPT\t0"});
  w.drives.refusesLetters = true;
  w.running().commandLine.silent = true;
  BootFrom("")(w);
}

const std::string kGhost = "X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe";
Spoil GhostVersion(const std::string& version) {
  return [=](Installer& w) { w.files.version(kGhost, version); };
}

TEST(Start, RefusesWithOneMessage) {
  const std::tuple<const char*, Spoil, const char*, int> cases[] = {
      {"running system", InstallTo("x:"), "S113", 1},
      {"no source either", Both(Source(""), InstallTo("X:")), "S113", 1},
      {"source gone", Drop("D:\\SOURCES\\INSTALL.WIM"), "INSTALL.WIM S11", 1},
      {"source a folder",
       Both(Drop("D:\\SOURCES\\INSTALL.WIM"),
            [](Installer& w) { w.files.folder("D:\\SOURCES\\INSTALL.WIM"); }),
       "S11", 1},
      {"no edition", [](Installer& w) { w.form.combo[kEditions].clear(); }, "S13", 1},
      {"boot gone", BootFrom("Q:"), "S15 Q:|", 1},
      {"boot empty", BootFrom(""), "S15 |", 1},
      {"boot no letter", BootFrom("S:\\boot"), "S15 S:\\boot|", 1},
      {"boot no drive", BootFrom("S"), "S15 S|", 1},
      {"boot is the running system's", BootFrom("x:"), "M4 x:", 1},
      {"boot gets no letter", HiddenBootStays, "S15 V:", 1},
      {"install empty", InstallTo(""), "S16", 1},
      {"install gone", InstallTo("G:"), "S16 G:", 1},
      {"both gone", Both(BootFrom("G:"), InstallTo("G:")), "S16 G:", 1},
      {"named in a label only",
       [](Installer& w) { w.partitionLines.erase(w.partitionLines.find("2:1")); }, "S16 E:", 1},
      {"no list", [](Installer& w) { w.partitionLines = ""; }, "M6", 1},
      {"source on target", InstallTo("D:"), "S73 D:", 1},
      {"relative source on target", Relative, "S73 E:", 1},
      {"ISO in ISO on target", Both(MountTwice, Source("F:\\install.wim")), "S73 E:", 1},
      {"program on target", RunsFromTarget, "M3 X:\\Pavoline X:", 1},
      {"answer file on target", Row(kUseAnswerFile, "E:\\a.xml"), "M3 E:\\a.xml E:", 1},
      {"drivers on target", Row(kAddDrivers, "E:\\drv"), "M3 E:\\drv E:", 1},
      {"plug-in on target", Row(kRunPlugin, "E:\\fix.exe /q"), "M3 E:\\fix.exe E:", 1},
      {"found plug-in on target",
       Both(Row(kRunPlugin, "Fix"),
            [](Installer& w) { w.running().plugins.add("Fix", "\"E:\\fix.exe\" /q"); }),
       "M3 E:\\fix.exe E:", 1},
      {"answer file unmarked", Row(kUseAnswerFile, "D:\\a.xml", "<unattend/>"), "S7", 1},
      {"imaging program gone", Drop("X:\\Pavoline\\Bin\\wimlib-imagex"), "S20", 4},
      {"Ghost without a build", Both(GhostVersion("12.0"), Source("D:\\a.gho")), "S14 ", 4},
      {"comma for Ghost", Both(GhostVersion("12.0.0.1"), Source("D:\\a,b.gho")), "M7", 1}};
  for (const auto& [name, spoil, message, code] : cases) {
    Installer w;
    w.start(), w.fillIn();
    spoil(w);
    w.pressStart();
    EXPECT_THAT(w.heard(), ElementsAre(AllOf(HasSubstr(message), HasSubstr("|16")))) << name;
    EXPECT_EQ(w.program->exitCode(), code) << name;
    EXPECT_FALSE(w.installed() || w.form.unloaded()) << name;
  }
}

TEST(Start, WaitsForTheListAndForgivesAKeptPartition) {
  Installer w;
  w.processes.onStart("CxDir.exe", [&](ToolRun& run) {
    run.does(500, [&] { w.pressStart(); });
    run.print(1000, w.partitionLines);
  });
  w.start();
  EXPECT_THAT(w.heard(), ElementsAre("S45|Initializing...|64"));
  w.running().activity = Activity::kListing;  // a chooser lists afresh
  w.pressStart();
  EXPECT_EQ(w.count("S45"), 2);

  Installer kept;
  kept.start(), kept.fillIn();
  InstallTo("D:")(kept);
  kept.form.check[kDoNotFormat].setValue(1);
  kept.pressStart();
  EXPECT_TRUE(kept.running().installation) << "the image may lie on a partition that is kept";
}

}  // namespace pavoline::testing
