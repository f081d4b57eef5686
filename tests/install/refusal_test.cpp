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
  struct Case {
    const char* message;
    Spoil spoil;
    int code = 1;
  };
  const Case cases[] = {
      {"RunningSystem|", Install("x:")},
      {"INSTALL.WIM SourceMissing|", Drop(kImage)},
      {"INSTALL.WIM SourceMissing|", [](auto& w) { w.files.drop(kImage), w.files.folder(kImage); }},
      {"NoEdition|", [](auto& w) { w.form.combo[kEditions].clear(); }},
      {"BootMissing Q:|", Boot("Q:")},
      {"BootMissing |", Boot("")},
      {"BootMissing S:\\boot|", [](auto& w) { w.files.folder("S:\\boot"), Boot("S:\\boot")(w); }},
      {"BootIsSystem x:|", Boot("x:")},
      {"BootMissing V:|",  // the system lends no letter
       [](auto& w) {
         w.running().partitions.push_back({kHiddenBoot});
         w.drives.refusesLetters = true;
         Boot("")(w);
         w.running().commandLine.silent = true;
       }},
      {"InstallMissing |", Install("")},
      {"InstallMissing G:|", [](auto& w) { Install("G:")(w), Boot("G:")(w); }},
      {"InstallMissing E:|", [](auto& w) { w.partitionLines.erase(0, 10); }},  // in a label still
      {"NoList|", [](auto& w) { w.partitionLines = ""; }},
      {"SourceOnTarget D:|", Install("D:")},
      {"SourceOnTarget E:|",
       [](auto& w) { w.files.currentFolder = "E:\\", Source("win10.wim")(w); }},
      {"SourceOnTarget E:|",  // inside an ISO inside an ISO
       [](auto& w) {
         for (const char* drive : {"F:", "G:"}) w.drives.add(drive, kDriveCdRom);
         w.running().mountedIsoDrive = "F:";
         w.running().mountedIsoFile = "G:\\inner.iso";
         w.running().outerIsos = {{"G:", "e:\\outer.iso"}};
         Source("F:\\install.wim")(w);
       }},
      {"LiesOnTarget X:\\Pavoline X:|",
       [](auto& w) {
         w.environment.variables["systemdrive"] = "C:";
         w.partitionLines += "3:1\tX:\t10.00GB\tNTFS\tPrimary\tStick\tUSB\tMBR\t0\r\n";
         Install("X:")(w);
       }},
      {"LiesOnTarget E:\\a.xml E:|", AnswerFile("E:\\a.xml")},
      {"LiesOnTarget E:\\drv E:|",
       [](auto& w) { Text(kDriverFolder, "E:\\drv")(w), w.form.check[kAddDrivers].setValue(1); }},
      {"LiesOnTarget E:\\fix.exe E:|", Plugin("E:\\fix.exe /q")},
      {"LiesOnTarget E:\\fix.exe E:|", Plugin("Fix")},
      {"WrongEncoding|", AnswerFile("D:\\a.xml", "<unattend/>")},
      {"ToolMissing|", Drop("X:\\Pavoline\\Bin\\wimlib-imagex"), 4},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto) { return ""; })},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto bytes) { return bytes.substr(0, 1675); })},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto bytes) { return bytes.replace(39, 1, "?"); })},
      {"PartLacks D:\\a2.swm|", SplitWith([](auto bytes) { return bytes.replace(40, 1, "\3"); })},
      {"SplitWimboot|",
       [](auto& w) { w.running().apply = {"--wimboot"}, SplitWith(std::identity())(w); }},
      {"TooManyParts|", LongNames},
      {"GhostMissing ", Source("D:\\a.gho", "12.0"), 4},
      {"GhostComma|", Source("D:\\a,b.gho", "12.0.0.1")}};
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

TEST(Start, ForgivesAKeptPartition) {
  Installer w;
  w.start(), w.fillIn();
  Install("D:")(w);
  w.form.check[kDoNotFormat].setValue(1);
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
