#include "app/installer.h"

#include <algorithm>

#include "platform/text.h"

namespace pavoline::testing {
namespace {

constexpr char kWim[] = "D:\\images\\win10.wim";

std::string Image(int index, const std::string& name) {
  return "<IMAGE INDEX=\"" + std::to_string(index) +
         "\"><WINDOWS><ARCH>9</ARCH><LANGUAGES><LANGUAGE>de-DE</LANGUAGE></LANGUAGES><VERSION>"
         "<MAJOR>10</MAJOR><MINOR>0</MINOR><BUILD>19045</BUILD><SPBUILD>1</SPBUILD></VERSION>"
         "</WINDOWS><NAME>" +
         name + "</NAME><DISPLAYNAME>" + name + "</DISPLAYNAME></IMAGE>";
}

// What the imaging program prints while it applies an image of 2,000 files or more.
void Apply(ToolRun& run, FakeFiles& files, int ms, bool dies) {
  const auto phase = [&](const std::string& name, int from, int to, int last = 100) {
    run.print(from, "\r\n");
    for (int p = 0; p <= last; p += 5) {
      const std::string percent = std::to_string(p);
      run.print(from + (to - from) * p / 100,
                "\r" + name + ": " + percent + " of 100 (" + percent + "%) done");
    }
  };
  const int end = 2000 + ms;
  phase("Creating files", 0, 2000);
  phase("Extracting file data", 2000, end, dies ? 50 : 100);
  if (dies) return;
  phase("Applying metadata to files", end, end + 1000);
  run.print(end + 1000, "\r\nDone applying WIM image.\r\n");
  run.does(end + 1000, [&files] {
    files.version("E:\\Windows\\System32\\kernel32.dll", "10.0.19045.1");
    files.folder("E:\\Windows\\SysWOW64");
  });
}

}  // namespace

Installer::Installer() {
  partitionLines =
      "1:1\tS:\t100.00MB\tFAT32\tEFI\tDisk A\tSYSTEM\tGPT\t0\r\n"
      "1:2\tD:\t465.76GB\tNTFS\tPrimary\tDisk A\tData E: old\tGPT\t0\r\n"
      "2:1\tE:\t200.00GB\tNTFS\tPrimary\tDisk B\tMy Disk\tGPT\t0\r\n";
  drives.add("S:");
  files.put(kWim, "wim");
  files.put("E:\\old.txt", "old");
  std::string lang = "[Language]\r\n";
  for (std::size_t n = 0; n < session.texts.strings.size(); ++n) {
    lang += "String(" + std::to_string(n) + ")=" + session.texts.strings[n] + "\r\n";
  }
  files.put("X:\\Pavoline\\Lang\\1033.lng", lang);
  for (const char* tool : {"CxDir\\x64\\CxDir", "Boot\\x64\\bcdboot", "Boot\\x64\\bootsect"}) {
    files.put("X:\\Pavoline\\Bin\\" + std::string(tool) + ".exe");
  }
  processes.onStart("CxDir.exe", [this](ToolRun& run) { run.print(5, partitionLines); });
  processes.onStart("info --xml", [this](ToolRun& run) {
    run.print(50,
              "\xFF\xFE" + text.toUtf16("<WIM>" + Image(1, "Home") + Image(2, "Pro") + "</WIM>"));
  });
  processes.onStart("wimlib-imagex.exe apply",
                    [this](ToolRun& run) { Apply(run, files, extractionMs, toolDies); });
  processes.onStart("format.com",
                    [this](ToolRun& run) { run.does(1000, [this] { drives.wipe("E:"); }); });
}

Session& Installer::start(std::vector<std::string> switches) {
  switches.insert(switches.begin(), "X:\\Pavoline\\Pavoline.exe");
  environment.commandLine = std::move(switches);
  program = std::make_unique<Program>(platform, form);
  if (program->load()) run(100);
  return program->session();
}

void Installer::fillIn() {
  form.combo1.setText(kWim);
  form.combo[kEditions].select(1);
  form.text[kBootPartition].setText("S:");
  form.text[kInstallPartition].setText("E:");
}

long Installer::count(const std::string& partOfMessage) const {
  return std::ranges::count_if(
      heard(), [&](const std::string& message) { return Contains(message, partOfMessage); });
}

}  // namespace pavoline::testing
