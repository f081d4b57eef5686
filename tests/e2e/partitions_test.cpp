// The real lister on real partition tables: what it prints against what sfdisk reads.
#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>

#include "stage.h"

namespace e2e {
namespace {

struct TestVolume {
  std::string name, place, letters, fileSystem, label;
};

struct TestDisk {
  int number;
  std::string size, model, script;
  std::vector<TestVolume> volumes;
};

// A label outside the code page, and as it is printed there.
constexpr char kLabel[] = "D\u00e9j\u00e0 \uff02\u65e5", kPrinted[] = "D\xe9j\xe0 ??";

constexpr char kEfi[] = "C12A7328-F81F-11D2-BA4B-00A0C93EC93B";
constexpr char kMsr[] = "E3C9E316-0B5C-4DB8-817D-F92DF00215AE";
constexpr char kBasic[] = "EBD0A0A2-B9E5-4433-87C0-68B6B72699C7";
constexpr char kRecovery[] = "DE94BBA4-06D1-4D40-A16A-BFD50179D6AC";

std::string Part(const std::string& size, const std::string& type, const std::string& more = "") {
  return (size.empty() ? "" : "size=" + size + ", ") + "type=" + type + more + "\n";
}

std::string ManyPartitions() {
  std::string script = "label: gpt\ntable-length: 256\n";
  for (int i = 0; i < 250; ++i) script += Part("2M", kBasic);
  return script;
}

// The volumes have names that other tests use as well: each new one costs the bench a letter.
const std::vector<TestDisk> kDisks = {
    // The first is there as the bench begins.
    {0,
     "",
     "Bench Disk",
     "",
     {{"s", "0/1", "S", "FAT32", "System"},
      {"e", "0/3", "E", "NTFS", "Old Windows"},
      {"d", "0/4", "D", "NTFS", "Media"}}},
    {1,
     "20G",
     "GPT Disk",
     "label: gpt\n" + Part("100M", kEfi) + Part("16M", kMsr) + Part("18G", kBasic) +
         Part("", kRecovery),
     {{"disk1-1", "1/1", "-", "FAT32", "ESP"},
      {"disk1-3", "1/3", "K", "NTFS", kLabel},
      // A second letter of the volume before it.
      {"disk1-3", "1/3", "KL", "NTFS", kLabel}}},
    {2,
     "30G",
     "MBR Disk",
     "label: dos\n" + Part("10G", "7", ", bootable") + Part("", "f") + Part("5G", "7") +
         Part("3G", "b"),
     {{"disk2-2", "2/2", "M", "NTFS", "First logical"}}},
    {3, "-", "Empty Reader", "", {}},
    {6, "1G", "Raw Disk", "", {{"esp", "6/0", "N", "-", ""}}},
    {7, "1G", "Many", ManyPartitions(), {{"last", "7/250", "O", "NTFS", "Last"}}},
    {9, "3T", "Large", "label: gpt\n" + Part("", kBasic), {{"other", "9/1", "P", "NTFS", ""}}},
    // The active partition is of the recovery type; a dynamic partition holds two volumes, of
    // which one goes on in the partition behind it.
    {10,
     "9G",
     "Dynamic",
     "label: dos\n" + Part("1G", "27", ", bootable") + Part("4G", "42") + Part("", "42"),
     {{"whole", "10/2+1048576", "Q", "NTFS", "Whole"},
      {"spanned", "10/2+2147483648,10/3+1048576", "R", "NTFS", "Spanned"}}}};

std::string ImageOf(const TestDisk& disk) {
  return BenchFolder() + "/disks/" + std::to_string(disk.number) + ".disk";
}

bool Shell(const std::string& line, const std::vector<std::string>& arguments) {
  std::vector<std::string> call = {"bash", "-c", line, "shell"};
  call.insert(call.end(), arguments.begin(), arguments.end());
  return bench::RunUnix(call) == 0;
}

// The value of a key in a piece of sfdisk's JSON, without quotes.
std::string Value(const std::string& line, const std::string& key) {
  const size_t at = line.find("\"" + key + "\":");
  if (at == std::string::npos) return {};
  const size_t begin = line.find_first_not_of(" \"", at + key.size() + 3);
  return line.substr(begin, line.find_first_of(",\"} \n", begin) - begin);
}

std::string SizeText(unsigned long long sectors) {
  const bool large = sectors >= 1u << 21;
  const unsigned long long hundredths = sectors * 512 * 100 >> (large ? 30 : 20);
  char text[40];
  snprintf(text, sizeof text, "%llu.%02llu%s", hundredths / 100, hundredths % 100,
           large ? "GB" : "MB");
  return text;
}

std::string KindOf(const std::string& type, bool active, const std::string& node) {
  static const std::map<std::string, std::string> kinds = {
      {kEfi, "EFI"}, {kMsr, "MSR"}, {kRecovery, "Recovery"}, {"27", "Recovery"}, {"42", "Dynamic"}};
  const auto kind = kinds.find(type);
  if (kind != kinds.end() && !(type == "27" && active)) return kind->second;
  const bool logical = type.size() <= 2 && node.back() >= '5';
  return logical ? "Logical" : "Primary";
}

void AddLines(const TestDisk& disk, std::string& lines) {
  Shell("sfdisk -J \"$1\" >\"$2\" 2>/dev/null",
        {ImageOf(disk), BenchFolder() + "/prefix/drive_c/table.json"});
  std::istringstream json(Read("C:\\table.json"));
  std::string style;
  int number = 0;
  for (std::string line; std::getline(json, line, '}');) {  // each partition is an object
    if (!Value(line, "label").empty()) style = Value(line, "label") == "gpt" ? "GPT" : "MBR";
    const std::string type = Value(line, "type"), node = Value(line, "node");
    if (type.empty() || type == "5" || type == "f") continue;
    const bool active = Value(line, "bootable") == "true";
    const std::string place = std::to_string(disk.number) + "/" + std::to_string(++number);
    std::vector<TestVolume> on;
    for (const TestVolume& volume : disk.volumes) {
      if ((volume.place + ",").find(place + ",") != std::string::npos ||
          volume.place.find(place + "+") != std::string::npos) {
        on.push_back(volume);
      }
    }
    if (on.empty()) on.push_back({"", "", "-", "", ""});
    for (const TestVolume& volume : on) {
      const std::string letter =
          volume.letters == "-" ? "" : volume.letters.substr(volume.letters.size() - 1) + ":";
      lines += std::to_string(disk.number + 1) + ":" + std::to_string(number) + "\t" + letter +
               "\t" + SizeText(std::stoull(Value(line, "size"))) + "\t" + volume.fileSystem + "\t" +
               KindOf(type, active, node) + "\t" + disk.model + "\t" +
               (volume.label == kLabel ? kPrinted : volume.label) + "\t" + style + "\t" +
               (active ? "1" : "0") + "\r\n";
    }
  }
}

std::string TablesAsRead() {
  std::string lines;
  for (const TestDisk& disk : kDisks) AddLines(disk, lines);
  return lines;
}

std::string Listed() {
  Write("C:\\list.bat", "@\"" + std::string(kAppFolder) + "\\Bin\\CxDir\\" + kArch +
                            "\\CxDir.exe\" -vaskor >C:\\listed 2>C:\\said\r\n");
  std::system("C:\\list.bat");
  return Read("C:\\listed");
}

class Listing : public OnTheBench {};

TEST_F(Listing, IsWhatThePartitionTablesSay) {
  for (const TestDisk& disk : kDisks) {
    if (disk.size.empty()) continue;
    ASSERT_TRUE(
        Shell("bash \"$1/bench\" disk \"$1\" \"$2\" \"$3\" \"$4\" <<<\"$5\"",
              {BenchFolder(), std::to_string(disk.number), disk.size, disk.model, disk.script}));
    for (const TestVolume& volume : disk.volumes) {
      ASSERT_TRUE(bench::RunBench(
          "volume", {volume.name, volume.place, volume.letters, volume.fileSystem, volume.label}));
    }
  }
  // One more letter, which passes for one of the network and is not asked.
  ASSERT_TRUE(bench::DefineDrive(L'J', "network", BenchFolder() + "/volumes/last"));
  ASSERT_TRUE(bench::RunBench("volume", {"last", "7/250", "OJ", "NTFS", "Last"}));

  EXPECT_EQ(Listed(), TablesAsRead());
  EXPECT_EQ(Read("C:\\said"), "CxDir: \\\\.\\PhysicalDrive3 cannot be read (error 21)\r\n");

  ASSERT_TRUE(Shell("sfdisk -q --delete \"$1\" 4 && sfdisk -q -a \"$1\" <<<\"$2\"",
                    {ImageOf(kDisks[1]), Part("100M", kMsr)}));
  EXPECT_EQ(Listed(), TablesAsRead());
}

}  // namespace
}  // namespace e2e
