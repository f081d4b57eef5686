#include "support/installer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/closing.h"
#include "config/language.h"
#include "platform/text.h"
#include "run/taskbar_progress.h"

namespace pavoline::testing {
namespace {

constexpr char kWim[] = "D:\\SOURCES\\INSTALL.WIM";

std::string Image(const std::string& name) {
  return "<IMAGE INDEX=\"\"><ARCH>9</ARCH><LANGUAGE>de-DE</LANGUAGE><NAME>" + name +
         "</NAME></IMAGE>";
}

// The letter before this in a tool's line: "E:".
std::string DriveBefore(const std::string& line, const std::string& text) {
  return line.substr(line.find(text) - 1, 1) + ":";
}

void FurnishTools(InstallShop& shop) {
  shop.files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
  for (const char* name : {"bcdboot.exe", "bootsect.exe"}) shop.files.put(shop.kBootTools + name);
  shop.processes.onStart("CxDir.exe", [&](ToolRun& run) { run.print(5, shop.partitionLines); });
  shop.processes.onStart("format.com", [&](ToolRun& run) {
    run.does(1000, [&shop, drive = DriveBefore(run.line, ": /FS")] { shop.drives.wipe(drive); });
  });
  shop.processes.onStart("wimlib-imagex.exe apply", [&](ToolRun& run) {
    run.print(2000, "\rCreating files: (9%)\rCreating files: (100%)");
    run.print(4000, "\rExtracting file data: (9%)\rExtracting file data: (50%)\r");
    run.print(22000, "\rApplying metadata to files: (9%)");
    run.print(23000, "\r\nDone applying WIM image.\r\n");
    run.does(23000, [&shop, drive = DriveBefore(run.line, ":\\ ")] { shop.applied(drive); });
  });
  shop.processes.onStart("bcdboot.exe", [&](ToolRun& run) {
    const std::string boot = DriveBefore(run.line, ": /f");
    const bool uefi = Contains(run.line, "uefi");
    run.does(100, [&shop, store = boot + (uefi ? "\\EFI\\Microsoft" : "") + "\\Boot\\bcd"] {
      shop.files.put(store, "new");
    });
  });
}

}  // namespace

InstallShop::InstallShop() {
  partitionLines =
      "2:1\tE:\t200.00GB\tNTFS\tPrimary\tDisk B\tMy Disk\tGPT\t0\r\n"
      "1:3\tS:\t100.00MB\tFAT32\tEFI\tDisk A\tSYSTEM\tGPT\t0\r\n"
      "1:2\tD:\t465.76GB\tNTFS\tPrimary\tDisk A\tData E: old\tGPT\t0\r\n";
  drives.add("S:", kDriveFixed, VolumePosition{1, 3});
  files.put(kWim, std::string(1000, 'i'));
  files.put("E:\\old.txt", "old");
  FurnishTools(*this);
  plan.source = kWim;
  plan.kind = ImageKind::kWim;
  plan.edition = 2;
  plan.editionName = "Pro";
  plan.language = "de-DE";
  plan.target = {"E:", "2:1", "My Disk", "200.00GB", "NTFS", "Disk B", drives.facts("E:")};
  plan.bootDrive = "S:";
  plan.format = true;
  CreateTaskbarProgress(session);
  form.timer1.onTick = [this] { ApplyTick(session); };
  form.timer2.onTick = [this] { RestoreTick(session); };
  form.timer3.onTick = [this] { DriverTick(session); };
  form.onUnload = [this] { Unload(session); };
}

int InstallShop::install() {
  begin();
  EXPECT_TRUE(runUntil([&] { return session.installation == nullptr; }));
  return static_cast<int>(session.exitCode);
}

void InstallShop::applied(const std::string& drive) {
  files.version(drive + "\\Windows\\System32\\kernel32.dll", version);
  files.folder(drive + "\\Windows\\SysWOW64");
}

std::vector<std::string> InstallShop::commands() const {
  std::vector<std::string> result;
  for (const std::string& line : processes.ran) {
    if (!Contains(line, "CxDir")) result.push_back(ReplaceAll(line, kBootTools, ""));
  }
  return result;
}

Installer::Installer() {
  files.folder("X:\\Pavoline\\Lang");
  EXPECT_TRUE(WriteLanguageFile(session, session.paths.langFile));
  processes.onStart("info --xml", [this](ToolRun& run) {
    run.print(50, "\xFF\xFE" + text.toUtf16(Image("Home") + Image("Pro")));
  });
}

Session& Installer::start(std::vector<std::string> switches) {
  switches.insert(switches.begin(), "X:\\Pavoline\\Pavoline.exe");
  environment.commandLine = std::move(switches);
  program = std::make_unique<Program>(platform, form);
  if (program->load()) run(100);
  return running();
}

void Installer::fillIn() {
  form.combo1.setText(kWim);
  form.combo[kEditions].select(1);
  form.text[kBootPartition].setText("S:");
  form.text[kInstallPartition].setText("E:");
}

int Installer::unattended(std::vector<std::string> more, const std::string& without) {
  std::vector<std::string> switches =
      Split("/source:" + std::string(kWim) +
                " /wimindex:2 /instpart:E: /bootpart:S: /formatinstpart /install /slient",
            " ");
  std::erase_if(switches, [&](const std::string& word) { return Contains(without, word); });
  switches.insert(switches.end(), more.begin(), more.end());
  start(switches);
  EXPECT_TRUE(runUntil([&] { return form.unloaded(); }));
  return program->exitCode();
}

long Installer::count(const std::string& partOfMessage) const {
  return std::ranges::count_if(
      heard(), [&](const std::string& message) { return Contains(message, partOfMessage); });
}

}  // namespace pavoline::testing
