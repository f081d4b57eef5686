// What goes otherwise: tools that die or are missing, volumes that change, planted files.
#include "driver/process.h"
#include "person.h"
#include "stage.h"

namespace e2e {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using namespace pavoline;

constexpr char kSwitches[] = " /instpart:E: /formatinstpart /install /slient";
const std::string kBin = std::string(kAppFolder) + "\\Bin\\";
const std::string kSystem = "C:\\windows\\system32\\";

class Otherwise : public OnTheBench {
 protected:
  void SetUp() override {
    OnTheBench::SetUp();
    faultsAsked_ = true;
    Place("small.wim", kImage);
    WriteSettings("AutoRestart=0");
  }
  void TearDown() override {
    for (const auto& [from, to] : moved_) MoveFileA(to.c_str(), from.c_str());
    OnTheBench::TearDown();
  }
  // Takes a file or folder away until the end of the test.
  void takeAway(const std::string& path) {
    moved_.emplace_back(path, path + ".away");
    ASSERT_TRUE(MoveFileA(path.c_str(), (path + ".away").c_str())) << path;
  }

 private:
  std::vector<std::pair<std::string, std::string>> moved_;
};

TEST_F(Otherwise, AnotherVolumeUnderTheLetterIsNotFormatted) {
  Write("E:\\letter.txt", "stays");
  ASSERT_TRUE(bench::RunBench("second"));
  Person person;
  ASSERT_TRUE(person.opensImage(kImage));
  person.main.command(kStart).click();
  const auto question = bench::WaitForMessage(person.main.program(), kPatience);
  ASSERT_TRUE(question);
  ASSERT_TRUE(bench::RunBench("letter", {"E", "other"}));
  EXPECT_TRUE(bench::Answer(*question, IDOK));
  EXPECT_EQ(person.hears(), Filled(More(kMoreOtherVolume), "%ip%", "E:"));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_THAT(ToolsRun(), IsEmpty());
}

TEST_F(Otherwise, AnEfiPartitionWithoutALetterGetsOneForTheInstallation) {
  ASSERT_TRUE(bench::RunBench("letter", {"S", "none"}));
  Person person("/source:" + std::string(kImage) + " /bootpart:AUTO" + kSwitches);
  EXPECT_EQ(person.exitCode(), 0);
  EXPECT_THAT(ArgumentsOf("bootsect"), ElementsAre("/nt60 V: /mbr"));
  EXPECT_FALSE(Exists("V:\\"));
}

TEST_F(Otherwise, APlantedProgramIsNotRun) {
  Place("install.iso", "D:\\install.iso");
  Write("D:\\Plug-in\\one\\config.ini", "[Option]\r\nPlug-inName=One\r\nPlug-inExe=a.exe\r\n");
  for (const char* folder : {"D:\\", "D:\\Plug-in\\", "D:\\Plug-in\\one\\"}) {
    for (const char* name : {"imdisk.exe", "cmd.exe", "dism.exe", "shutdown.exe"}) {
      ASSERT_TRUE(bench::PlaceCompanion(std::string(folder) + name));
    }
  }
  ASSERT_TRUE(bench::PlaceCompanion(std::string(kAppFolder) + "\\shutdown.exe"));
  WriteSettings("AutoRestart=1");
  Person person("/source:D:\\install.iso /wimindex:1 /bootpart:S: /reboot" +
                std::string(kSwitches));
  EXPECT_EQ(person.exitCode(), 0);
  EXPECT_TRUE(Soon([] { return ArgumentsOf("imdisk").size() == 2; }));  // mounted, dismounted
  for (const bench::Call& call : bench::JournalCalls()) {
    EXPECT_THAT(call.tool, Not(HasSubstr(".exe"))) << call.arguments;  // as companions are noted
  }
}

TEST_F(Otherwise, CheckSaysWhatIsThereAndWhatIsImpossible) {
  const auto check = [] {
    bench::Process shell("cmd /c check.cmd >C:\\check.txt 2>&1", kAppFolder);
    const std::string code = std::to_string(shell.exitCode(kPatience).value_or(99));
    return code + Read("C:\\check.txt");
  };
  EXPECT_THAT(check(), AllOf(StartsWith("0"), HasSubstr("there    wimlib-imagex, version 1."),
                             HasSubstr("there    dism, version 10.0.19041.844\r\n"),
                             HasSubstr("MISSING  Ghost"),
                             Not(AnyOf(HasSubstr("FAILS"), HasSubstr("Can't")))));
  takeAway(kSystem + "format.com");
  EXPECT_THAT(check(), AllOf(StartsWith("2"), HasSubstr("MISSING  format")));
  bench::SetFaults("wimlib-imagex", "fail 1");
  EXPECT_THAT(check(), AllOf(StartsWith("1"), HasSubstr("FAILS    wimlib-imagex")));
  takeAway(kBin + "CxDir\\" + kArch);
  EXPECT_THAT(check(), AllOf(StartsWith("1"), HasSubstr("MISSING  CxDir")));
}

}  // namespace
}  // namespace e2e
