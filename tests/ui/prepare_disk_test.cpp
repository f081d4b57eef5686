// An empty disk from the menu to the partition fields, and all that keeps one from being touched.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "app/closing.h"
#include "disk/disk_preparation.h"
#include "support/workshop.h"
#include "ui/controls.h"
#include "ui/system_menu.h"

namespace pavoline::testing {

using namespace ::testing;

constexpr char kEmpty[] = "1\t500107862016\tMy %bp% SSD\tS1\tRAW\t0\tfixed\tempty";
constexpr char kBoot[] = "2:1\tS:\t260.00MB\tFAT32\tEFI\tMy SSD\tSystem\tGPT\t0\n";
constexpr char kWindows[] = "2:3\tW:\t465.49GB\tNTFS\tPrimary\tMy SSD\tWindows\tGPT\t0\n";
constexpr char kOther[] = "1:1\tD:\t99.00GB\tNTFS\tPrimary\tDisk A\tData\tMBR\t1\n";

std::string With(std::string text, const std::string& what, const std::string& by) {
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
  return text;
}

struct DiskShop : Workshop {
  DiskShop() {
    files.put("X:\\Pavoline\\Bin\\CxDir\\x64\\CxDir.exe");
    files.put("C:\\Windows\\system32\\diskpart.exe");
    form.marks.startupStage = 2;
    form.onQueryUnload = [this] { return QueryUnload(session); };
    form.onUnload = [this] { Unload(session); };
    processes.onStart("CxDir.exe -vaskor", [this](ToolRun& run) { run.print(5, partitions); });
    processes.onStart("CxDir.exe /disks", [this](ToolRun& run) {
      run.print(5, looks.front());
      if (looks.size() > 1) looks.erase(looks.begin());
    });
    processes.onStart("diskpart.exe /S", [this](ToolRun& run) {
      script = files.text("C:\\Windows\\temp\\prepare.txt");
      if (hangs) return run.neverEnds();
      run.endsAt(2000);
      run.exits(diskpartCode);
      time.after(2000 + delay, [this] { partitions = kOther + made; });
    });
    environment.startedBy = Firmware::kUefi;
  }
  // Opens the window, in which the person does this and then presses Prepare.
  void prepare(std::function<void(Form&)> act = {}) {
    dialogs.modals.push_back([this, act](Form& window) {
      if (act) act(window);
      rows = Nth<ListView>(window).rows();
      plan = Nth<Label>(window, 2).text();
      ButtonWith(window, "Prepare").press();
    });
    EXPECT_TRUE(HandleSystemCommand(session, kMenuPrepareDisk));
  }
  std::string fields() {
    return form.text[kBootPartition].text() + form.text[kInstallPartition].text();
  }

  std::vector<std::string> looks = {kEmpty};  // of the lister at the disks, the last for ever
  std::string partitions = kOther, made = std::string(kBoot) + kWindows;
  long delay = 0;
  std::uint32_t diskpartCode = 0;
  bool hangs = false;
  std::string script, plan;
  std::vector<std::vector<std::string>> rows;
};

TEST(PrepareDisk, IsJudgedByThePartitionsThatAreThereAfterwards) {
  const std::string done = "Prepared 1 My %bp% SSD S: W:|Information|64",
                    failed = "NotPrepared 1 My %bp% SSD|Error|16";
  const std::string both = std::string(kBoot) + kWindows;
  const std::tuple<std::string, long, std::uint32_t, std::string, const char*> cases[] = {
      {both, 0, 1, done, "S:W:"},  // whatever diskpart says
      {both, 5500, 0, done, "S:W:"},
      {kBoot, 0, 0, failed, "D:D:"},
      {With(both, "W:", ""), 0, 0, failed, "D:D:"},
      {With(both, "NTFS", ""), 0, 0, failed, "D:D:"},
      {With(both, "2:", "3:"), 0, 0, failed, "D:D:"},
      {With(both, "GPT", "MBR"), 0, 0, failed, "D:D:"}};
  for (const auto& [made, delay, code, message, fields] : cases) {
    DiskShop w;
    w.made = made;
    w.delay = delay;
    w.diskpartCode = code;
    w.form.text[kInstallPartition].setText("D:");
    w.form.text[kBootPartition].setText("D:");
    for (const char* drive : {"S:", "W:"}) {
      w.time.after(1500, [&w, drive] { w.drives.add(drive, kDriveFixed); });
    }
    w.prepare();
    EXPECT_THAT(
        w.heard(),
        ElementsAre("PrepareQuestion 1 My %bp% SSD 465.76GB\n\nUefiPartitions 260.00MB 16.00MB "
                    "465.49GB\n\nConfirmTail|Confirm|305",
                    message));
    EXPECT_EQ(w.fields(), fields) << made;
    EXPECT_TRUE(w.session.activity == Activity::kIdle && w.form.combo1.enabled());
  }
}

TEST(PrepareDisk, NothingIsStartedForADiskThatIsNotTheOneChosenOrNoLongerEmpty) {
  const std::string empty = kEmpty;
  for (const std::string& second :
       {With(empty, "0\tfixed\tempty", "1\tfixed\tpartitions"), With(empty, "empty", "data"),
        With(empty, "RAW", "GPT"), With(empty, "S1", "S2"), With(empty, "SSD", "HDD"),
        With(empty, "5001", "5002"), "2" + empty.substr(1), empty.substr(0, 45), std::string()}) {
    DiskShop w;
    w.looks = {kEmpty, second};
    w.prepare();
    EXPECT_THAT(w.heard(), ElementsAre(_, "DiskChanged 1 My %bp% SSD|Error|16")) << second;
    EXPECT_FALSE(w.processes.ranLike("diskpart"));
  }
  DiskShop w;
  w.dialogs.answers = {kAnswerCancel};
  w.prepare();
  EXPECT_TRUE(!w.processes.ranLike("diskpart") && w.heard().size() == 1);
}

TEST(PrepareDisk, OffersOnlyEmptyDisksWithRoomThatAreNotItsOwn) {
  const std::string stick = With(kEmpty, "fixed", "removable");
  const auto offered = [](const std::string& list, bool usb = false, int ownDisk = 9) {
    DiskShop w;
    w.looks = {list};
    w.session.options.usbPartition = usb;
    w.drives.add("X:", kDriveFixed, VolumePosition{static_cast<std::uint32_t>(ownDisk), 1});
    w.prepare();
    EXPECT_NE(w.processes.ranLike("diskpart"), w.rows.empty());
    return w.rows.size();
  };
  EXPECT_EQ(offered(kEmpty), 1u);
  EXPECT_EQ(offered(kEmpty, false, 2), 0u);
  EXPECT_EQ(offered(stick) + 10 * offered(stick, true), 10u);
  const std::pair<const char*, const char*> changes[] = {
      {"empty", "data"},    {"empty", "empty\t"},
      {"empty", "Empty"},   {"500107862016", "4294967295"},
      {"\t0\tf", "\t1\tf"}, {"\t0\tf", "\t\tf"},
      {"1\t5", "x\t5"},     {"016", "016G"},
      {"RAW", "dos"},       {"\tS1", ""},
      {"fixed", "?"}};
  for (const auto& [part, by] : changes) {
    EXPECT_EQ(offered(With(kEmpty, part, by)), 0u) << by;
  }
  for (std::size_t cut = 0; kEmpty[cut] != 0; ++cut) {
    EXPECT_FALSE(ReadDiskLine(std::string(kEmpty, cut)).value_or(PhysicalDisk{}).empty) << cut;
  }
}

TEST(PrepareDisk, SuggestsWhatTheMachineWasStartedByAndFits) {
  const std::string large = With(kEmpty, "500107862016", "3000592982016");
  const std::tuple<Firmware, std::string, std::string> cases[] = {
      {Firmware::kUefi, kEmpty, "UefiPartitions 260.00MB 16.00MB 465.49GB"},
      {Firmware::kBios, kEmpty, "BiosPartitions 500.00MB 465.27GB"},
      {Firmware::kUnknown, large, "UefiPartitions 260.00MB 16.00MB 2794.25GB"},
      {Firmware::kBios, large, "BiosTooLarge"}};
  for (const auto& [firmware, line, plan] : cases) {
    DiskShop w;
    w.environment.startedBy = firmware;
    w.looks = {line};
    w.prepare();
    EXPECT_EQ(w.plan, plan);
    EXPECT_EQ(w.processes.ranLike("diskpart"), plan != "BiosTooLarge");
  }
}

TEST(PrepareDisk, EndsWithTheProgramWhateverItWaitsFor) {
  for (const int during : {1, 2, 3, 4}) {  // both looks, diskpart, the question
    DiskShop w;
    int looks = 0;
    w.processes.onStart("CxDir.exe /disks", [&](ToolRun& run) {
      run.print(5, kEmpty);
      if (++looks == during) run.neverEnds();
    });
    w.hangs = during == 3;
    const auto closes = [&] {
      EXPECT_FALSE(w.form.combo1.enabled());
      w.form.close();
    };
    w.time.after(60'000, closes);
    if (during == 4) w.dialogs.onMessage = [&](const auto&) { w.form.unload(); };
    w.prepare();
    EXPECT_EQ(w.heard().size(), during == 1 || during == 4 ? 1u : 2u);
    EXPECT_THAT(w.heard().back(),
                StartsWith(during == 4 ? "PrepareQuestion" : "ClosePrepare|CloseTitle|"));
    EXPECT_EQ(looks, during == 1 || during == 4 ? 1 : 2);
    EXPECT_EQ(w.processes.ranLike("diskpart"), during == 3);
    EXPECT_FALSE(w.processes.ranLike("-vaskor"));
    const std::string journal = w.files.text("C:\\Windows\\temp\\Pavoline.log");
    EXPECT_EQ(journal.find("left running") != std::string::npos, during != 4);
  }
}

// The commands of a script of the program's folder, on disk 1 and without those that erase or show.
std::string Shipped(const std::string& name) {
  std::ifstream file(std::filesystem::path(PAVOLINE_SOURCE_DIR) / "resources/app/Scripts" / name);
  std::string script;
  for (std::string line; std::getline(file, line);) {
    if (std::string("clean, detail disk, list volume").find(line) != std::string::npos) continue;
    if (line.starts_with("rem")) continue;
    script += (script.empty() ? "" : "\r\n") + With(line, "disk N", "disk 1");
  }
  return script;
}

TEST(PrepareDisk, TheScriptIsThatOfABlankDiskAndErasesNothing) {
  DiskPreparation preparation{*ReadDiskLine(kEmpty), DiskLayout::kUefi};
  const std::string uefi = PrepareScript(preparation, "S", "W");
  EXPECT_EQ(uefi, Shipped("blank-disk-uefi.txt"));
  preparation.disk.style = "GPT";  // converting it again would be an error
  EXPECT_EQ(PrepareScript(preparation, "S", "W"), With(uefi, "convert gpt\r\n", ""));
  preparation.layout = DiskLayout::kBios;
  EXPECT_EQ(PrepareScript(preparation, "S", "W"), Shipped("blank-disk-bios.txt"));

  DiskShop w;
  for (const char* drive : {"S:", "V:", "Z:"}) w.drives.add(drive);
  w.prepare();
  EXPECT_EQ(w.script, With(uefi, "=S\r\n", "=Y\r\n") + "\r\n");
}

}  // namespace pavoline::testing
