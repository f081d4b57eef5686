#include "faults/watch.h"

#include <algorithm>
#include <map>
#include <set>

#include "driver/bench_run.h"
#include "driver/drive_files.h"
#include "driver/main_window.h"
#include "driver/process.h"
#include "faults/remains.h"
#include "form/text_numbers.h"
#include "ui/system_menu.h"

namespace faults {
namespace {

using bench::Window;
using namespace pavoline;

constexpr ULONGLONG kLongest = 240'000;      // milliseconds; what takes longer hangs
constexpr ULONGLONG kLongestFrozen = 8'000;  // without an answer of the window
constexpr ULONGLONG kToolRuns = 3'000;       // before the event that a running tool sets off
constexpr ULONGLONG kQuiet = 700;            // idle and without a message: it is over
constexpr size_t kLongestText = 100;         // bytes of a message that are told

std::string Beginning(const std::string& text) {
  std::string line;
  for (const unsigned char c : text) {
    const bool plain = c >= ' ' && c != '|' && c != 0x7F;
    if (plain)
      line += static_cast<char>(c);
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  }
  if (line.size() > kLongestText) line = line.substr(0, kLongestText) + "...";
  return "\"" + line + "\"";
}

class Watch {
 public:
  explicit Watch(Case row) : row_(std::move(row)) {}

  Seen run() {
    Prepare(row_);
    process_ = start();
    began_ = GetTickCount64();
    if (row_.attended)
      operate();
    else
      wait([] { return false; });
    seen_.seconds = static_cast<double>(GetTickCount64() - began_) / 1000;
    if (row_.attended && !cut_) leave();
    if (const auto code = process_.exitCode(cut_ ? 0 : 20'000); code && !cut_)
      seen_.exit = std::to_string(*code);
    seen_.recorded = Recorded();
    seen_.left = LeftBehind(row_.edition);
    seen_.verdict = verdict();
    if (cut_) nextRun();
    return seen_;
  }

 private:
  bench::Process start() const {
    const std::string program = std::string(bench::kAppFolder) + "\\Pavoline.exe";
    return bench::Process("\"" + program + "\" /lng:1033 " + (row_.attended ? "" : switches()),
                          bench::kAppFolder);
  }

  std::string switches() const {
    const bool keep = row_.switches.find(" keep") != std::string::npos;
    return "/source:" + row_.source + " /wimindex:1 /instpart:E: /bootpart:S: /install /slient" +
           (keep ? "" : " /formatinstpart" + row_.switches);
  }

  // Until the condition holds, the program has ended, or too much time has passed.
  template <class Condition>
  bool wait(Condition condition, ULONGLONG milliseconds = kLongest) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (process_.running()) {
      hear();
      happen();
      if (cut_ || condition()) return !cut_;
      if (GetTickCount64() > end) {
        if (milliseconds == kLongest) {
          seen_.verdict = "hangs";
          bench::TakeShot("hangs " + row_.part + " " + row_.name);
          EndEverything();
        }
        return false;
      }
      Sleep(40);
    }
    return false;
  }

  // Notes what is shown; a person answers OK, an unattended run is left alone.
  void hear() {
    const Window window = main_.window();
    DWORD_PTR result = 0;
    const ULONGLONG now = GetTickCount64();
    if (!window ||
        SendMessageTimeoutW(window.handle(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 500, &result))
      answered_ = now;
    if (now - answered_ > kLongestFrozen && seen_.verdict.empty())
      seen_.verdict = "hangs (window frozen)";
    const auto message = bench::ShownMessage(main_.program());
    if (!message) return cancelFileDialog();
    quietSince_ = now;
    const bool fresh = !heard_.contains(message->window.handle());
    if (fresh) {
      Sleep(100);  // its texts follow the window
      heard_.insert(message->window.handle());
      const auto whole = bench::ShownMessage(main_.program());
      note(whole ? whole->text : message->text);
    }
    if (row_.attended) bench::Answer(*message, IDOK);
  }

  void note(const std::string& text) {
    const bool question = text.find(bench::Text(kTextConfirmTail)) != std::string::npos;
    if (question) {
      confirmed_ = true;
      happen("question");
    }
    if (text.find(bench::Text(kTextFinished)) != std::string::npos) toldFinished_ = true;
    const std::string noTools = bench::More(kMoreNoBootTools);
    const bool warned = question && text.find(noTools) != std::string::npos;
    if (question && !warned) return;
    const std::string told = Beginning(warned ? noTools : text);
    seen_.messages += (seen_.messages.empty() ? "" : ", ") + told;
  }

  void cancelFileDialog() {
    for (const Window& window : bench::WindowsOf(main_.program())) {
      if (!window.visible() || window.className() != "#32770") continue;
      if (!window.childOfClass("Edit") || !row_.attended || row_.virtualDisk) continue;
      seen_.messages += ", the file chooser";
      bench::AnswerFileDialog(main_.program(), "", 2000);
    }
  }

  void happen(const std::string& now = "") {
    for (Event& event : row_.events) {
      if (event.done || !due(event.when, now)) continue;
      event.done = true;
      if (event.action == "close") {
        main_.window().close();
      } else if (event.action == "power") {
        EndEverything();
        cut_ = true;
      } else {
        Act(event.action);
      }
    }
  }

  bool due(const std::string& when, const std::string& now) {
    if (when == "question") return now == when;
    if (when.ends_with("%")) return main_.progressBar().progress() >= std::stoi(when);
    if (!bench::IsRunning(when)) return false;
    const ULONGLONG since = running_.emplace(when, GetTickCount64()).first->second;
    return GetTickCount64() - since >= kToolRuns;
  }

  bool idle() const {
    const Window start = main_.command(kStart);
    std::string caption = start.text(), wanted = bench::Text(kTextStart);
    std::erase(caption, '&');
    std::erase(wanted, '&');
    return start.enabled() && caption == wanted;
  }

  bool over() {
    if (!idle()) quietSince_ = GetTickCount64();
    return GetTickCount64() - quietSince_ > kQuiet;
  }

  void operate() {
    wait([&] { return main_.source().enabled() && !main_.text(kInstallPartition).text().empty(); },
         25'000);
    if (row_.virtualDisk) return createDisk();
    main_.source().enterText(row_.source);
    const ULONGLONG entered = GetTickCount64();
    wait([&] {
      if (!main_.source().enabled()) return false;
      return !main_.editions().items().empty() || (over() && GetTickCount64() - entered > 3000);
    });
    for (const auto& [field, drive] :
         {std::pair{kInstallPartition, "E:"}, {kBootPartition, "S:"}}) {
      if (main_.text(field).text().empty()) main_.text(field).enterText(drive);
    }
    began_ = quietSince_ = GetTickCount64();
    started_ = true;
    main_.command(kStart).click();
    wait([&] { return over(); });
  }

  void createDisk() {
    const auto window = [&](const char* form) {
      Window found;
      wait(
          [&] {
            found = bench::TopWindow(main_.program(), std::string("Pavoline.") + form, "");
            return static_cast<bool>(found);
          },
          20'000);
      return found;
    };
    main_.window().systemCommand(kMenuVirtualDisk);
    window("VirtualDiskWindow").childWithText(bench::Text(kTextCreate)).click();
    const Window creation = window("VirtualDiskCreation");
    std::vector<Window> fields;
    for (const Window& child : creation.children()) {
      if (child.className() == "Edit") fields.push_back(child);
    }
    std::sort(fields.begin(), fields.end(), [](const Window& a, const Window& b) {
      return a.rectangle().top < b.rectangle().top;
    });
    if (fields.size() < 2) return;
    fields[0].enterText("D:\\new.vhd");
    fields[1].enterText("64");
    creation.childOfClass("ComboBox").select(0);  // megabytes
    began_ = GetTickCount64();
    creation.childWithText(bench::Text(kTextCreateNow)).click();
    wait([&] { return !seen_.messages.empty(); });
    Window disks = window("VirtualDiskWindow");
    wait([&] { return disks.enabled() || !creation; }, 5000);
    if (creation) creation.close();
    wait([&] { return disks.enabled(); }, 5000);
    disks.close();
    wait([&] { return main_.window().enabled(); }, 5000);
  }

  void leave() {
    if (!process_.running()) return;
    main_.window().close();
    wait([] { return false; }, 15'000);
  }

  // What a cut has left must not stand in the way of a run without any fault.
  void nextRun() {
    for (const char* tool : {"wimlib-imagex-apply", "bcdboot", "dism", "format"}) {
      bench::SetFaults(tool, "");
    }
    cut_ = false;
    row_.attended = false;
    process_ = start();
    wait([] { return false; });
    const auto code = process_.exitCode(1000);
    seen_.left += "; next run: exit code " + (code ? std::to_string(*code) : "none") + ", " +
                  Recorded() + ", " + LeftBehind(row_.edition);
    const bool whole = code == 0u && SystemComplete(row_.edition) && MenuNew();
    if (!whole && seen_.verdict.empty()) seen_.verdict = "the next run fails";
  }

  std::string verdict() const {
    if (!seen_.verdict.empty() || cut_ || row_.virtualDisk) return seen_.verdict;
    const bool formatted = !bench::CallsOf("format").empty();
    const bool asked = row_.attended ? confirmed_ : row_.switches.find("keep") == std::string::npos;
    if ((formatted && !asked) || !OtherDrivesWhole()) return "formatted unasked";
    const bool finished = toldFinished_ || seen_.recorded.starts_with("done") || seen_.exit == "0";
    const bool target = row_.drivers ? DriversIn() : true;
    if (finished && started() && !row_.meantSo &&
        !(SystemComplete(row_.edition) && MenuNew() && target))
      return "says finished though it is not";
    return seen_.recorded.empty() ? "record lost" : "";
  }

  // A person who never came to Start is told nothing of an installation.
  bool started() const { return started_ || !row_.attended; }

  Case row_;
  bench::MainWindow main_;
  bench::Process process_;
  Seen seen_;
  std::set<HWND> heard_;
  std::map<std::string, ULONGLONG> running_;
  ULONGLONG began_ = 0, quietSince_ = GetTickCount64(), answered_ = GetTickCount64();
  bool confirmed_ = false, started_ = false, toldFinished_ = false, cut_ = false;
};

}  // namespace

Seen TryCase(Case row) { return Watch(std::move(row)).run(); }

}  // namespace faults
