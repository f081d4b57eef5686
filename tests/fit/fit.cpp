// Does every text fit its control? Shows the program's own windows in this process, each as the
// program would, and measures them with the fonts that are drawn. Arguments are those of the
// program: "/lng:1031 /source:D:\iso\install.wim". Ends with 1, naming window and control, when a
// text is cut, and with 2 when a window did not show.
#include <windows.h>

#include <cstdio>
#include <thread>

#include "app/program.h"
#include "driver/main_window.h"
#include "driver/ruler.h"
#include "form/text_numbers.h"
#include "install/overall_progress.h"
#include "tour/tour.h"
#include "win32/form_window.h"
#include "win32/win_platform.h"

namespace {

using namespace pavoline;

constexpr char kProgram[] = "test_fit.exe";

// The texts that come and go in a control of the main window.
struct Changing {
  bench::Window control;
  std::vector<int> texts;
};

std::string CutChangingTexts(const Texts& texts) {
  const bench::MainWindow main(kProgram);
  const Changing all[] = {
      {main.status(),
       {kTextStatusNormal, kTextStatusWide, kTextCreatingFiles, kTextExtracting,
        kTextApplyingMetadata, kTextSearching, kTextFormatting, kTextBootFiles, kTextBootSector,
        kTextWritingAnswerFile, kTextRunningPlugin, kTextAddingDrivers, kTextSearchingDrivers,
        kTextSearchDone, kTextCopyingImage}},
      {main.command(kStart), {kTextStart, kTextBusy}},
      {main.search(), {kTextSearch, kTextStop}},
  };
  std::string faults;
  for (const Changing& changing : all) {
    for (const int text : changing.texts) {
      faults += bench::CutText(changing.control, texts.strings[static_cast<size_t>(text)]);
    }
  }
  // The longest line that an installation of hours could have.
  constexpr std::uint64_t kHours = 36'000'000;
  const Overall longest{{Phase::kCopy, Phase::kCreate, Phase::kExtract, Phase::kDrivers},
                        PhaseNow{Phase::kExtract, 0},
                        kHours,
                        kHours};
  return faults + bench::CutText(main.stop(), texts.more[kMoreStopButton]) +
         bench::CutText(main.overall(), OverallLine(texts, longest));
}

std::string LeavesScreen(const bench::Window& window) {
  RECT room{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
  const RECT area = window.rectangle();
  const bool inside = area.left >= room.left && area.top >= room.top && area.right <= room.right &&
                      area.bottom <= room.bottom;
  return inside ? "" : "reaches out of the screen\n";
}

// Walks through the windows from a thread of its own, while the program runs in the first.
int MeasureAll(const Texts& texts) {
  int windows = 0;
  std::string faults;
  const bench::Visit visit = [&](const std::string& name, const bench::Window& window) {
    ++windows;
    std::string found = bench::CutTexts(window) + LeavesScreen(window);
    if (name == "main") found += CutChangingTexts(texts);
    if (!found.empty()) faults += name + ": " + found;
  };
  const bool shown =
      bench::TourMainWindow(kProgram, visit) && bench::TourSmallWindows(kProgram, visit);
  printf("%s%d windows measured\n", faults.c_str(), windows);
  return !shown ? 2 : faults.empty() ? 0 : 1;
}

}  // namespace

int main() {
  WinPlatform windows;
  Form1 form;
  Program program(windows.platform(), form);
  if (!program.load()) return 2;
  FormWindow window(form, windows.loop(), nullptr);
  window.show();
  int result = 2;
  std::thread tour([&] {
    result = MeasureAll(program.session().texts);
    fflush(stdout);
    ExitProcess(static_cast<UINT>(result));
  });
  windows.loop().runUntil([&form] { return form.unloaded(); });
  tour.join();
  return result;
}
