// What cannot be installed is refused with one message, and nothing is touched.
#include "person.h"
#include "stage.h"

namespace e2e {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using namespace pavoline;

class Refusing : public OnTheBench {
 protected:
  void SetUp() override {
    OnTheBench::SetUp();
    Write("E:\\letter.txt", "stays");
  }
  void TearDown() override {
    EXPECT_THAT(ToolsRun(), IsEmpty());
    EXPECT_EQ(Read("E:\\letter.txt"), "stays");
    OnTheBench::TearDown();
  }
};

TEST_F(Refusing, AStartThatCannotSucceedOrIsTakenBack) {
  Place("small.wim", kImage);
  Person person;
  ASSERT_TRUE(person.opensImage(kImage));
  person.entersPartitions("D:", "S:");
  person.main.command(kStart).click();
  EXPECT_EQ(person.hears(), Text(kTextSourceOnTarget, "%ip%", "D:"));
  EXPECT_TRUE(person.leftInPeace());
  person.entersPartitions("E:", "S:\\");
  person.main.command(kStart).click();
  const auto question = bench::WaitForMessage(person.main.program(), kPatience);
  ASSERT_TRUE(question);
  person.presses(question->window, More(kMoreDetailsButton));
  bench::Window plan = person.sees("PlanText");
  ASSERT_TRUE(plan);
  EXPECT_THAT(plan.childOfClass("Edit").text(), HasSubstr("\\format.com E: /FS:NTFS"));
  EXPECT_FALSE(question->window.enabled());
  plan.key(VK_RETURN);
  EXPECT_TRUE(Soon([&] { return !plan && question->window.enabled(); }));
  EXPECT_EQ(person.hears(IDCANCEL).find(Text(kTextConfirmFormat, "%ip_id%", "E: ")), 0u);
  EXPECT_TRUE(person.leftInPeace());
}

TEST_F(Refusing, ADryRunTellsTheLinesOnItsOutput) {
  Place("small.wim", kImage);
  Write("C:\\dry.bat", "@\"" + std::string(kAppFolder) + "\\Pavoline.exe\" /lng:1033 /source:" +
                           kImage + " /wimindex:2 /instpart:E: /bootpart:S: /formatinstpart" +
                           " /reboot /install /slient /dryrun >C:\\told\r\n@exit %errorlevel%\r\n");
  EXPECT_EQ(std::system("C:\\dry.bat"), 0);
  EXPECT_THAT(Read("C:\\told"),
              AllOf(StartsWith(More(kMoreDryRun) + "\r\n"),
                    HasSubstr("\\wimlib-imagex.exe apply \"d:\\Images\\small.wim\" 2 E:\\  >"),
                    HasSubstr("\r\n    shutdown.exe -r -f -t 5\r\n"), EndsWith("exit code 0\r\n")));
  EXPECT_THAT(ToolsRun(), testing::IsEmpty());
}

TEST_F(Refusing, AnUnattendedRunEndsItself) {
  Place("small.wim", kImage);
  Person person("/source:" + std::string(kImage) +
                " /instpart:Q: /bootpart:S: /formatinstpart /install /slient");
  // Left alone, the message counts down and goes by itself.
  const auto shown = bench::WaitForMessage(person.main.program(), kPatience);
  ASSERT_TRUE(shown);
  EXPECT_EQ(shown->text, Filled(Filled(More(kMoreOtherPartitions), "%ip%", "E:"), "%bp%", "S:"));
  EXPECT_EQ(person.exitCode(), 2);
}

}  // namespace
}  // namespace e2e
