// What is refused before anything is lost: by the checks of Start, and when another volume than the
// confirmed one answers afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/installer.h"

namespace pavoline::testing {

using namespace ::testing;

using Spoil = std::function<void(Installer&)>;

const std::string kImage = "D:\\SOURCES\\INSTALL.WIM", kMark = "\xEF\xBB\xBF";
const std::string kHiddenBoot = "2:2\t\t100.00MB\tFAT32\tEFI\tDisk B\tSYSTEM\tGPT\t0";

Spoil Text(TextIndex field, const std::string& text) {
  return [=](Installer& w) { w.form.text[field].setText(text); };
}
Spoil Install(const std::string& drive) { return Text(kInstallPartition, drive); }
Spoil Boot(const std::string& drive) { return Text(kBootPartition, drive); }
Spoil Source(const std::string& path, const std::string& ghostVersion = "") {
  return [=](Installer& w) {
    w.files.version("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", ghostVersion);
    w.files.put(path, "image");
    w.form.combo1.setText(path);
  };
}
Spoil AnswerFile(const std::string& path, const std::string& bytes = kMark) {
  return [=](Installer& w) {
    w.files.put(path, bytes);
    Text(kAnswerFile, path)(w);
    w.form.check[kUseAnswerFile].setValue(1);
  };
}
Spoil Plugin(const std::string& command) {
  return [=](Installer& w) {
    w.running().plugins.add("Fix", "\"E:\\fix.exe\" /q");
    w.form.combo2.setText(command);
    w.form.check[kRunPlugin].setValue(1);
  };
}
Spoil Drop(const std::string& path) {
  return [=](Installer& w) { w.files.drop(path); };
}
// A split image on D: whose second part is this one of `bytes`.
Spoil SplitWith(std::function<std::string(std::string)> bytes) {
  return [=](Installer& w) {
    w.putSplitImage("D:\\a");
    w.form.combo1.setText("D:\\a.swm");
    w.files.put("D:\\a2.swm", bytes(w.files.text("D:\\a2.swm")));
  };
}
// The line that names all the parts is too long for the interpreter.
void LongNames(Installer& w) {
  const std::string path = "D:\\" + std::string(3000, 'x');
  w.files.shortNames = false;
  w.putSplitImage(path);
  w.form.combo1.setText(path + ".swm");
}

TEST(Start, RefusesWithOneMessage) {
  const std::tuple<const char*, Spoil, int> cases[] = {
      {"RunningSystem|", Install("x:"), 1},
      {"INSTALL.WIM SourceMissing|", Drop(kImage), 1},
      {"INSTALL.WIM SourceMissing|", [](auto& w) { w.files.drop(kImage), w.files.folder(kImage); },
       1},
      {"NoEdition|", [](auto& w) { w.form.combo[kEditions].clear(); }, 1},
      {"BootMissing Q:|", Boot("Q:"), 1},
      {"BootMissing |", Boot(""), 1},
      {"BootMissing S:\\boot|", [](auto& w) { w.files.folder("S:\\boot"), Boot("S:\\boot")(w); },
       1},
      {"BootIsSystem x:|", Boot("x:"), 1},
      {"BootMissing V:|",  // the system lends no letter
       [](auto& w) {
         w.running().partitions.push_back({kHiddenBoot});
         w.drives.refusesLetters = true;
         Boot("")(w);
         w.running().commandLine.silent = true;
       },
       1},
      {"InstallMissing |", Install(""), 1},
      {"InstallMissing G:|", [](auto& w) { Install("G:")(w), Boot("G:")(w); }, 1},
      {"InstallMissing E:|", [](auto& w) { w.partitionLines.erase(0, 10); },
       1},  // in a label still
      {"NoList|", [](auto& w) { w.partitionLines = ""; }, 1},
      {"SourceOnTarget D:|", Install("D:"), 1},
      {"SourceOnTarget E:|",
       [](auto& w) { w.files.currentFolder = "E:\\", Source("win10.wim")(w); }, 1},
      {"SourceOnTarget E:|",  // inside an ISO inside an ISO
       [](auto& w) {
         for (const char* drive : {"F:", "G:"}) w.drives.add(drive, kDriveCdRom);
         w.running().mountedIsoDrive = "F:";
         w.running().mountedIsoFile = "G:\\inner.iso";
         w.running().outerIsos = {{"G:", "e:\\outer.iso"}};
         Source("F:\\install.wim")(w);
       },
       1},
      {"LiesOnTarget X:\\Pavoline X:|",
       [](auto& w) {
         w.environment.variables["systemdrive"] = "C:";
         w.partitionLines += "3:1\tX:\t10.00GB\tNTFS\tPrimary\tStick\tUSB\tMBR\t0\r\n";
         Install("X:")(w);
       },
       1},
      {"LiesOnTarget E:\\a.xml E:|", AnswerFile("E:\\a.xml"), 1},
      {"LiesOnTarget E:\\drv E:|",
       [](auto& w) { Text(kDriverFolder, "E:\\drv")(w), w.form.check[kAddDrivers].setValue(1); },
       1},
      {"LiesOnTarget E:\\fix.exe E:|", Plugin("E:\\fix.exe /q"), 1},
      {"LiesOnTarget E:\\fix.exe E:|", Plugin("Fix"), 1},
      {"WrongEncoding|", AnswerFile("D:\\a.xml", "<unattend/>"), 1},
      {"ToolMissing|", Drop("X:\\Pavoline\\Bin\\wimlib-imagex"), 4},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto) { return ""; }), 1},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto bytes) { return bytes.substr(0, 1675); }), 1},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto bytes) { return bytes.replace(39, 1, "?"); }), 1},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto bytes) { return bytes.replace(40, 1, "\3"); }),
       1},
      {"SplitWimboot|",
       [](auto& w) { w.running().apply = {"--wimboot"}, SplitWith(std::identity())(w); }, 1},
      {"TooManyParts|", LongNames, 1},
      {"GhostMissing ", Source("D:\\a.gho", "12.0"), 4},
      {"GhostComma|", Source("D:\\a,b.gho", "12.0.0.1"), 1}};
  for (const auto& [message, spoil, code] : cases) {
    Installer w;
    w.start(), w.fillIn();
    spoil(w);
    w.processes.ran.clear();
    w.pressStart();
    EXPECT_THAT(w.heard(), ElementsAre(AllOf(HasSubstr(message), HasSubstr("|16"))));
    EXPECT_EQ(w.program->exitCode(), code) << message;
    EXPECT_TRUE(w.commands().empty() && !w.form.unloaded()) << message;
  }
}

TEST(Start, WaitsForTheListAndForgivesAKeptPartition) {
  Installer w;
  w.processes.onStart("CxDir.exe", [&](ToolRun& run) {
    run.does(500, [&] { w.pressStart(); });
    run.print(1000, w.partitionLines);
  });
  w.start();
  EXPECT_THAT(w.heard(), ElementsAre("ListNotReady|Initializing...|64"));
  w.fillIn();
  w.running().activity = Activity::kListing;  // a chooser lists afresh
  w.pressStart();
  EXPECT_EQ(w.count("ListNotReady"), 2);

  w.running().activity = Activity::kIdle;
  Install("D:")(w);
  w.form.check[kDoNotFormat].setValue(1);
  w.processes.onStart("CxDir.exe", [&](ToolRun& run) { run.print(5, w.partitionLines); });
  w.pressStart();
  EXPECT_TRUE(w.running().installation) << "the image may lie on a partition that is kept";
}

std::function<void(InstallShop&)> Listed(const std::string& from, const std::string& to) {
  return [=](InstallShop& w) { w.partitionLines = ReplaceAll(w.partitionLines, from, to); };
}

TEST(CheckAgain, WritesNothingWhenItIsNotTheConfirmedVolume) {
  // Between the question and the format.
  const std::pair<const char*, std::function<void(InstallShop&)>> cases[] = {
      {"OtherVolume E:", [](InstallShop& w) { w.drives.wipe("E:"); }},
      {"OtherVolume E:", Listed("My Disk", "Your Disk")},
      {"OtherVolume E:", Listed("200.00GB", "100.00GB")},
      {"OtherVolume E:", Listed("Disk B", "Disk C")},
      {"OtherVolume E:",  // the address alone
       [](InstallShop& w) {
         w.drives.add("E:", kDriveFixed, VolumePosition{3, 1});
         w.drives.setFacts("E:", w.plan.target.facts);
       }},
      {"OtherVolume E:", Listed("\tE:\t", "\tF:\t")},
      {"OtherVolume E:", [](InstallShop& w) { w.partitionLines = ""; }},
      {"OtherVolume E:", [](InstallShop& w) { w.processes.failNextStarts = 2; }},
      {"OtherVolume E:", [](InstallShop& w) { w.files.noRoom = "C:\\Windows\\temp"; }},
      {"SourceMissing", [](InstallShop& w) { w.files.drop(w.plan.source); }}};
  for (const auto& [message, spoil] : cases) {
    for (const ImageKind kind : {ImageKind::kWim, ImageKind::kGho}) {
      InstallShop w;
      w.plan.kind = kind;
      w.session.partitions = {{"2:1\tE:\t200.00GB\tNTFS\tPrimary\tDisk B\tMy Disk\tGPT\t0"}};
      spoil(w);
      EXPECT_EQ(w.install(), 1);
      EXPECT_THAT(w.heard(), ElementsAre(HasSubstr(message)));
      EXPECT_TRUE(w.commands().empty());
      EXPECT_FALSE(w.form.timer1.enabled() || w.form.timer2.enabled());
    }
  }
}

TEST(CheckAgain, BelievesAnEmptyListTheSecondTimeOnly) {
  InstallShop w;
  const std::string lines = std::exchange(w.partitionLines, "");
  w.time.after(3, [&] { w.partitionLines = lines; });  // while the first one runs
  EXPECT_EQ(w.install(), 0);
}

TEST(SplitImage, IsAppliedFromAllItsPartsOrNotAtAll) {
  for (const bool taken : {false, true}) {
    Installer w;
    w.start(), w.fillIn();
    w.files.shortNames = false;
    w.putSplitImage("D:\\100% &\\a b");
    w.form.combo1.setText("D:\\100% &\\a b.swm");
    w.dialogs.onMessage = [&](const auto&) {
      if (taken) w.files.drop("D:\\100% &\\a b3.swm");
    };
    w.pressStart();
    EXPECT_TRUE(w.runUntil([&] { return !w.running().installation; }));
    EXPECT_EQ(w.count("PartLacks D:\\100% &\\a b3.swm"), taken);
    EXPECT_EQ(
        w.processes.ranLike("apply \"D:\\100% &\\a b.swm\" 1 E:\\  --ref=\"D:\\100% &\\a b2.swm"
                            "\" --ref=\"D:\\100% &\\a b3.swm\" >"),
        !taken);
    EXPECT_EQ(w.processes.ranLike("format.com"), !taken);
  }
}

}  // namespace pavoline::testing
