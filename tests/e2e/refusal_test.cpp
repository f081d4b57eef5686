// What cannot be installed is refused with one message, and nothing is touched.
#include "person.h"
#include "stage.h"

namespace e2e {
namespace {

using testing::EndsWith;
using testing::IsEmpty;
using namespace pavoline;

class Refusing : public OnTheBench {
 protected:
  void SetUp() override {
    OnTheBench::SetUp();
    write("E:\\letter.txt", "stays");
  }
  void TearDown() override {
    EXPECT_THAT(toolsRun(), IsEmpty());
    EXPECT_EQ(read("E:\\letter.txt"), "stays");
    OnTheBench::TearDown();
  }
};

TEST_F(Refusing, EachStartThatCannotSucceed) {
  place("small.wim", kImage);
  write("D:\\letter.txt", "no image");
  Person person;
  const struct {
    std::string source, install, boot, message;
  } cases[] = {
      {"", "E:", "S:", " " + text(kTextSourceMissing)},
      {"", "c:", "S:", text(kTextRunningSystem)},
      {"D:\\none.wim", "E:", "S:", "D:\\none.wim " + text(kTextSourceMissing)},
      {"D:\\letter.txt", "E:", "S:", text(kTextNoEdition)},
      {kImage, "E:", "Q:", text(kTextBootMissing, "%bp%", "Q:")},
      {kImage, "D:", "S:", text(kTextSourceOnTarget, "%ip%", "D:")},
      {kImage, "Q:", "S:", text(kTextInstallMissing, "%ip%", "Q:")},
      {kImage, "E:", "E:\\Windows", text(kTextBootMissing, "%bp%", "E:\\Windows")},
      {kImage, "E:", "C:", filled(more(kMoreBootIsSystem), "%bp%", "C:")},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.source + " to " + each.install + " with " + each.boot);
    person.main.source().enterText(each.source);
    if (each.source == kImage) {
      ASSERT_TRUE(person.opensImage(kImage));
    }
    person.entersPartitions(each.install, each.boot);
    person.main.command(kStart).click();
    EXPECT_EQ(person.hears(), each.message);
    EXPECT_TRUE(person.leftInPeace());
  }
  person.entersPartitions("E:", "S:\\");
  person.main.command(kStart).click();
  person.hears(IDCANCEL);
  person.main.window().chord({VK_MENU, 'P'});
  person.main.window().key(VK_RETURN);  // in a field it begins nothing
  EXPECT_TRUE(person.leftInPeace());
}

TEST_F(Refusing, UnattendedRunsEndThemselves) {
  place("small.wim", kImage);
  const std::string image = kImage;
  const struct {
    std::string switches, message;
    int code;
  } cases[] = {
      {"/source:D:\\none.wim /instpart:E: /bootpart:S:", text(kTextSourceMissing), 1},
      {"/source:" + image + " /instpart:D: /bootpart:S:", text(kTextSourceOnTarget, "%ip%", "D:"),
       1},
      {"/source:D:\\letter.wim /instpart:E: /bootpart:S:", text(kTextNoEdition), 1},
      // A partition that is not there is no other one.
      {"/source:" + image + " /instpart:Q: /bootpart:S:",
       filled(filled(more(kMoreOtherPartitions), "%ip%", "E:"), "%bp%", "S:"), 2},
  };
  write("D:\\letter.wim", "no image");
  faultsAsked_ = true;  // which the imaging program refuses as well
  for (const auto& each : cases) {
    SCOPED_TRACE(each.switches);
    Person person(each.switches + " /formatinstpart /install /slient");
    if (each.code == 1) {
      EXPECT_THAT(person.hears(), EndsWith(each.message));
    } else {  // left alone, the message counts down and goes by itself
      const auto shown = bench::waitForMessage(person.main.program(), kPatience);
      ASSERT_TRUE(shown);
      EXPECT_EQ(shown->text, each.message);
    }
    EXPECT_EQ(person.exitCode(), each.code);
  }
}

TEST_F(Refusing, FilesThatAreNoImages) {
  write("D:\\notes.wim", "these are notes, and a file name is only a name");
  write("D:\\empty.esd", "");
  Person person;
  for (const char* path : {"D:\\notes.wim", "D:\\empty.esd"}) {
    SCOPED_TRACE(path);
    person.main.source().enterText(path);
    EXPECT_EQ(person.hears(), text(kTextNoEdition));
    EXPECT_TRUE(person.leftInPeace());
    EXPECT_THAT(person.main.editions().items(), IsEmpty());
  }
  faultsAsked_ = true;  // the imaging program refuses them as well
}

TEST_F(Refusing, SettingsOfGarbageAndLanguagesGone) {
  std::string garbage;
  for (unsigned seed = 1; garbage.size() < 10'000'000; seed = seed * 1103515245 + 12345) {
    garbage += static_cast<char>(seed >> 16);
  }
  write(std::string(kAppFolder) + "\\Pavoline.ini", garbage);
  {
    Person person;
    person.main.command(kStart).click();
    EXPECT_EQ(person.hears(), " " + text(kTextSourceMissing));
    EXPECT_TRUE(person.leftInPeace());
  }
  ASSERT_EQ(bench::runUnix({"rm", "-r", bench::unixPath(bench::fromUtf8(kAppFolder)) + "/Lang"}),
            0);
  Person person;
  EXPECT_FALSE(person.main.text(kInstallPartition).text().empty());
  person.main.command(kStart).click();
  EXPECT_NE(person.hears(), "(silence)");
  EXPECT_TRUE(person.process().running());
}

}  // namespace
}  // namespace e2e
