#include "app/installer.h"

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
  const auto percent = [&](int at, const std::string& what, int p) {
    run.print(at,
              "\r" + what + ": " + std::to_string(p) + " of 100 (" + std::to_string(p) + "%) done");
  };
  for (int p = 0; p <= 100; p += 25) percent(p * 20, "Creating files", p);
  run.print(2000, "\r\n");
  const int last = dies ? 50 : 100;
  for (int p = 0; p <= last; ++p) percent(2000 + p * ms / 100, "Extracting file data", p);
  const int end = 2000 + last * ms / 100;
  run.endsAt(end);
  if (dies) return;
  run.print(end, "\r\n");
  for (int p = 0; p <= 100; p += 20) percent(end + p * 10, "Applying metadata to files", p);
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
  files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
  files.put("X:\\Pavoline\\Bin\\Boot\\x64\\bcdboot.exe");
  files.put("X:\\Pavoline\\Bin\\Boot\\x64\\bootsect.exe");
  tools();
}

void Installer::tools() {
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

void Installer::fillIn(const std::string& source) {
  form.combo1.setText(source);
  form.combo[kEditions].select(1);
  form.text[kBootPartition].setText("S:");
  form.text[kInstallPartition].setText("E:");
}

int Installer::count(const std::string& partOfMessage) const {
  int n = 0;
  for (const auto& shown : dialogs.messages) n += Contains(shown.text, partOfMessage) ? 1 : 0;
  return n;
}

}  // namespace pavoline::testing
