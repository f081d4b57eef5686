// Whole installations through the real window, and the ways they end early.
#include <filesystem>

#include "person.h"
#include "stage.h"

namespace e2e {
namespace {

using bench::Window;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using namespace pavoline;

constexpr char kUnattended[] = " /instpart:E: /bootpart:S: /formatinstpart /install /slient";

const std::string kRecords = "D:\\Records & 100% more\\";

class Installing : public OnTheBench {};

// The name of the one file or folder in a folder; empty when there is not just one.
std::string OnlyEntry(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  return names.size() == 1 ? names[0] : "";
}

// Slows the data phase down: some hundred updates, each a tenth of a second long.
void SlowDown() { bench::SetFaults("wimlib-imagex", "pace 100"); }

std::string Chosen(const Person& person, int box) { return person.main.text(box).text(); }

TEST_F(Installing, AttendedFromTypedPathToRestartCalledOff) {
  Place("small.wim", kImage);
  Write("E:\\Users\\Before\\letter.txt", "must be gone");
  Person person;
  person.main.source().typeText(kImage);
  ASSERT_TRUE(Soon([&] { return person.main.editions().items().size() == 2; }));
  EXPECT_THAT(person.main.editions().items(),
              ElementsAre("Windows 10 Home  64-Bit", "Windows 10 Pro  64-Bit"));
  person.main.editions().select(1);

  person.main.command(kChooseInstall).click();
  Window chooser = person.sees("PartitionChooser");
  Window list = chooser.childOfClass("SysListView32");
  const auto free = testing::EndsWith("GB");
  EXPECT_THAT(
      list.rows(),
      ElementsAre(ElementsAre("E:", StartsWith("Old"), "Bench Disk", "NTFS", "40.00GB", "0", free),
                  ElementsAre("D:", "Media", "Bench Disk", "NTFS", "64.00GB", "0", free)));
  chooser.key(VK_DOWN);
  chooser.key(VK_RETURN);
  EXPECT_TRUE(Soon([&] { return Chosen(person, kInstallPartition) == "D:"; }));
  person.main.command(kChooseInstall).click();
  person.sees("PartitionChooser").childOfClass("SysListView32").doubleClickRow(0);
  EXPECT_TRUE(Soon([&] { return Chosen(person, kInstallPartition) == "E:"; }));
  person.main.text(kBootPartition).enterText("");
  person.main.command(kChooseBoot).click();
  person.sees("PartitionChooser").key(VK_RETURN);
  EXPECT_TRUE(Soon([&] { return Chosen(person, kBootPartition) == "S:"; }));

  person.main.command(kStart).click();
  EXPECT_THAT(person.hears(IDOK),
              AllOf(StartsWith(Text(kTextConfirmFormat, "%ip_id%", "E: ")),
                    HasSubstr("40.00GB, NTFS, Bench Disk"), EndsWith(Text(kTextConfirmTail))));
  EXPECT_THAT(person.hears(IDCANCEL), EndsWith(Text(kTextRestarting)));
  EXPECT_TRUE(Soon([&] { return ArgumentsOf("shutdown").size() == 2; }));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_TRUE(HoldsSystem(2, 'E'));
  EXPECT_THAT(ToolsRun(), ElementsAre("format", "wimlib-imagex", "bcdboot", "bcdboot", "bootsect",
                                      "shutdown", "shutdown"));
  EXPECT_THAT(ArgumentsOf("shutdown"), ElementsAre("-r -f -t 5", "-a"));
}

TEST_F(Installing, UnattendedWithEveryOptionalStep) {
  Place("small.wim", kImage);
  Write("D:\\Drivers\\net 1\\net1.inf", "[Version]\r\nClass=Net\r\n");
  Write("D:\\Drivers\\net 1\\net1.sys", std::string(5000, 'x'));
  Write("D:\\answers.xml",
        "\xef\xbb\xbf<!--\r\n[Pavoline]\r\nprocess=1\r\n-->\r\n"
        "<unattend pc=\"%Pavoline-PC%\" arch=\"%Pavoline-Arch%\"/>\r\n");
  MakeFolder("D:\\Tools");
  ASSERT_TRUE(bench::PlaceCompanion("D:\\Tools\\fix.exe"));
  Write("D:\\Hall 1\\hall.ini",
        "[Option]\r\nAddDriver=1\r\nAddDriverFile=D:\\Drivers\r\nPlugin=1\r\n"
        "PluginFile=D:\\Tools\\fix.exe %ip% %bp%\r\n");
  Person person("/source:" + std::string(kImage) + " /wimindex:2" + kUnattended +
                " \"/ini:D:\\Hall 1\\hall.ini\" /answer:D:\\answers.xml /name:PC-%mac% "
                "\"/logdir:D:\\Records & 100% more\\%mac%\"");
  EXPECT_EQ(person.exitCode(), 0);

  EXPECT_TRUE(HoldsSystem(2, 'E'));
  const std::string machine = OnlyEntry(kRecords), folder = kRecords + machine + "\\";
  EXPECT_THAT(Read("E:\\Windows\\Panther\\unattend.xml"),
              HasSubstr("<unattend pc=\"PC-" + machine + "\" arch=\"amd64\"/>"));
  for (const std::string& record :
       {folder + OnlyEntry(folder), std::string("E:\\Windows\\Panther\\Pavoline.log")}) {
    EXPECT_THAT(Read(record),
                AllOf(HasSubstr("step ended: drivers, "), HasSubstr("format.com E:"),
                      HasSubstr("outcome: done, exit code 0\r\n"), Not(HasSubstr("fix.exe E:"))));
  }
  EXPECT_EQ(bench::RunUnix({"bash", "-c",
                            "cmp \"$1/d/Drivers/net 1/net1.sys\" "
                            "\"$1/e/Windows/System32/DriverStore/FileRepository\"/net1*/net1.sys",
                            "cmp", BenchFolder() + "/volumes"}),
            0);
  EXPECT_THAT(ArgumentsOf("fix.exe"), ElementsAre("E: S:"));
  EXPECT_THAT(ToolsRun(), ElementsAre("format", "wimlib-imagex", "bcdboot", "bcdboot", "bootsect",
                                      "dism", "fix.exe"));
}

TEST_F(Installing, FromPathsThatScriptsTripOver) {
  const std::string folder = "D:\\Bilder & Co 100% ^fertig\\";
  for (const char* part : {"2.swm", "3.swm"}) {
    Place("small" + std::string(part), folder + "Установка 日本 (neu) small" + part);
  }
  for (const char* prop : {"small.swm", "install.iso"}) {
    SCOPED_TRACE(prop);
    const std::string source = folder + "Установка 日本 (neu) " + prop;
    Place(prop, source);
    Write("E:\\letter.txt", "must be gone");
    Person person("/source:\"" + source + "\" /wimindex:1" + kUnattended);
    EXPECT_EQ(person.exitCode(), 0);
    EXPECT_TRUE(HoldsSystem(1, 'E'));
  }
  // The drive of the ISO is taken away behind the program's end.
  EXPECT_TRUE(Soon([] { return ArgumentsOf("imdisk").size() == 2; }));
}

TEST_F(Installing, ImagingProgramKilledWhileItWrites) {
  Place("small.wim", kImage);
  SlowDown();
  Person person;
  ASSERT_TRUE(person.opensImage(kImage));
  person.startsAndConfirms();
  ASSERT_TRUE(person.seesProgress(15));
  EXPECT_TRUE(person.busy());
  EXPECT_FALSE(person.main.source().enabled());
  EXPECT_EQ(bench::EndProcesses("wimlib-imagex.exe"), 1);
  EXPECT_EQ(person.hears(), Text(kTextApplyFailed));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_THAT(ToolsRun(), ElementsAre("format", "wimlib-imagex"));
}

TEST_F(Installing, StoppedAndClosedInMidApply) {
  Place("small.wim", kImage);
  SlowDown();
  WriteSettings("AutoRestart=0");
  Person person;
  ASSERT_TRUE(person.opensImage(kImage));
  person.startsAndConfirms();
  ASSERT_TRUE(person.seesProgress(10));
  person.main.window().close();
  EXPECT_EQ(person.hears(IDCANCEL), Text(kTextCloseQuestion));
  EXPECT_TRUE(person.busy());
  EXPECT_TRUE(bench::IsRunning("wimlib-imagex.exe"));
  EXPECT_EQ(person.hears(), Text(kTextFinished));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_TRUE(HoldsSystem(1, 'E'));

  const auto works = [] { return bench::IsRunning("wimlib-imagex.exe"); };
  person.startsAndConfirms();
  ASSERT_TRUE(Soon(works));
  EXPECT_TRUE(Soon([&] { return !person.main.overall().text().empty(); }));
  person.main.stop().click();
  EXPECT_EQ(person.hears(IDOK), More(kMoreStopQuestion));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_TRUE(!works() && !person.main.stop().visible() && person.main.overall().text().empty());
  // The bench's half of a tool that was ended lets go of the volume a moment later.
  EXPECT_TRUE(Soon([] {
    return bench::RunUnix({"bash", "-c", "! pgrep -f \"^bash $1/tools/run-tool \" >/dev/null",
                           "pgrep", BenchFolder()}) == 0;
  }));

  person.startsAndConfirms();
  ASSERT_TRUE(Soon(works));
  person.main.window().close();
  EXPECT_EQ(person.hears(IDOK), Text(kTextCloseQuestion));
  EXPECT_EQ(person.exitCode(), 6);
  EXPECT_FALSE(works());
  EXPECT_THAT(ArgumentsOf("bootsect"), testing::SizeIs(1));  // of the first installation
}

}  // namespace
}  // namespace e2e
