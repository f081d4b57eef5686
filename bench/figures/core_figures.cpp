// Costs of the core's own work on the real adapter, one per line: core_figures images|ticks|search
// ... Every figure is the median of its repetitions.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>

#include "engine/wim_apply.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "platform/text.h"
#include "run/tool_files.h"
#include "source/image_search.h"
#include "source/wim_info.h"
#include "win32/win_platform.h"

namespace {

using namespace pavoline;

double MedianMilliseconds(int repetitions, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < repetitions; ++i) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    times.push_back(time.count());
  }
  std::ranges::sort(times);
  return times[times.size() / 2];
}

// ---- images: what GetWimInfo does with the imaging program's output

std::string ImageXml(int count) {
  std::string xml = "<WIM>";
  for (int i = 1; i <= count; ++i) {
    const std::string number = std::to_string(i);
    xml +=
        "<IMAGE INDEX=\"" + number +
        "\"><DIRCOUNT>2396</DIRCOUNT><FILECOUNT>4706</FILECOUNT><WINDOWS><ARCH>9</ARCH>"
        "<PRODUCTNAME>Windows</PRODUCTNAME><EDITIONID>Professional</EDITIONID><LANGUAGES>"
        "<LANGUAGE>de-DE</LANGUAGE><DEFAULT>de-DE</DEFAULT></LANGUAGES><VERSION><MAJOR>10</MAJOR>"
        "<MINOR>0</MINOR><BUILD>19045</BUILD><SPBUILD>3803</SPBUILD></VERSION></WINDOWS>"
        "<NAME>Edition " +
        number + "</NAME><DISPLAYNAME>Edition " + number + "</DISPLAYNAME></IMAGE>";
  }
  return xml + "</WIM>";
}

std::string AsUtf16(const std::string& ascii) {
  std::string bytes = "\xFF\xFE";
  for (char letter : ascii) {
    bytes += letter;
    bytes += '\0';
  }
  return bytes;
}

void PrintImages(Session& session, int count) {
  const std::string file = TempFile(session, "figures.log");
  session.platform.files.write(file, AsUtf16(ImageXml(count)));
  const double time = MedianMilliseconds(20, [&] {
    session.form.combo[kEditions].clear();
    session.form.combo[kEditionDetails].clear();
    for (const WimImageInfo& image : ParseWimInfo(ReadUnicodeFile(session, file))) {
      session.form.combo[kEditions].addItem(image.listText);
      session.form.combo[kEditionDetails].addItem(image.detailText);
    }
  });
  printf("read, parse and list an XML of %d images: %.2f ms\n", count, time);
  session.platform.files.remove(file);
}

// ---- ticks: one look of the apply monitor; the bench keeps a wimlib-imagex.exe running meanwhile

void PrintTick(Session& session, int updates) {
  std::string log =
      "Applying image 2 (\"Windows 10 Pro\") from \"install.wim\" to directory \"E:\\\"\r\n";
  for (int i = 0; i < updates; ++i) {
    log += "\rExtracting file data: " + std::to_string(i) + " MiB of 30000 MiB (" +
           std::to_string(i * 99 / updates) + "%) done";
  }
  session.platform.files.write(TempFile(session, "apply.xml"), log);
  ApplyRun run;
  run.progress = {100, 0, 0};
  StartRequest request;
  request.commandLine = "cmd.exe /c exit";
  run.tool.emplace(session.platform.processes.start(request), "wimlib-imagex.exe",
                   TempFile(session, "apply.xml"), "");
  const auto first = [&] {
    run.log = ApplyLog();
    run.bytesRead = 0;
    ApplyMonitorTick(session, run);
  };
  const double whole = MedianMilliseconds(50, first);
  const double time = MedianMilliseconds(50, [&] { ApplyMonitorTick(session, run); });
  const double bare = MedianMilliseconds(50, [&] { session.platform.processes.list(); });
  printf(
      "a monitor tick on a log of %d updates: %.3f ms with nothing new in it, %.3f ms to read all "
      "of it at once; %.3f ms the bare call (listing the processes)\n",
      updates, time, whole, bare);
  session.platform.files.remove(TempFile(session, "apply.xml"));
}

// ---- search: a tree of many entries

class CountingProcesses : public Processes {
 public:
  explicit CountingProcesses(Processes& real) : real_(real) {}
  std::unique_ptr<StartedProgram> start(const StartRequest& request) override {
    return real_.start(request);
  }
  std::vector<RunningProcess> list() override { return real_.list(); }
  void terminate(std::uint32_t id) override { real_.terminate(id); }
  void handleEvents() override {
    ++yields;
    real_.handleEvents();
  }

  void handleEventsFor(long milliseconds) override { real_.handleEventsFor(milliseconds); }

  long yields = 0;

 private:
  Processes& real_;
};

long Enumerate(Files& files, const std::string& folder) {
  long count = 0;
  std::vector<std::string> below;
  files.list(folder + "\\*.*", [&](const FileEntry& entry) {
    if (entry.name == "." || entry.name == "..") return true;
    ++count;
    if (entry.attributes & kFolderAttribute) below.push_back(folder + "\\" + entry.name);
    return true;
  });
  for (const std::string& child : below) count += Enumerate(files, child);
  return count;
}

void PrintSearch(Platform& platform, const std::string& drive) {
  CountingProcesses processes(platform.processes);
  Platform counted{processes,        platform.files,       platform.drives,
                   platform.profile, platform.environment, platform.text,
                   platform.windows, platform.taskbar,     platform.dialogs};
  Form1 form;
  Session session(counted, form);
  session.options.searchType = 1;
  session.options.searchLevel = 3;
  session.partitions.push_back({"1:1\t" + drive + "\t64.00GB\tNTFS\tPrimary\tDisk\tLabel\tGPT\t0"});
  long entries = 0;
  const double bare = MedianMilliseconds(3, [&] { entries = Enumerate(platform.files, drive); });
  const double search = MedianMilliseconds(3, [&] {
    processes.yields = 0;
    session.search = SearchState{};
    SearchImages(session, SearchMode::kDrives, "");
  });
  printf(
      "search of a tree of %ld entries: %.0f ms, %.2f times a bare enumeration (%.0f ms); %ld "
      "yields, %zu images\n",
      entries, search, search / bare, bare, processes.yields, session.search.found.size());
}

}  // namespace

int wmain(int count, wchar_t** values) {
  const std::wstring verb = count > 1 ? values[1] : L"";
  WinPlatform windows;
  Form1 form;
  Session session(windows.platform(), form);
  if (verb == L"images") {
    for (int images : {2, 1000, 10000}) PrintImages(session, images);
  } else if (verb == L"ticks") {
    for (int updates : {300, 3000, 30000}) PrintTick(session, updates);
  } else if (verb == L"search") {
    PrintSearch(windows.platform(), "D:");
  } else {
    return 2;
  }
  return 0;
}
