// Ghost images: the command line by the program's build, its end, its death.
#include "person.h"
#include "stage.h"

namespace e2e {
namespace {

using testing::ElementsAre;
using namespace pavoline;

constexpr char kGhostImage[] = "D:\\Images\\small.gho";

class Ghost : public OnTheBench {
 protected:
  static void prepare(const std::string& build, const std::string& faults) {
    Place("small.gho", kGhostImage);
    WriteSettings("AutoRestart=0");
    ASSERT_TRUE(bench::RunBench("ghost", {build}));
    bench::SetFaults("ghost", faults);
  }

  static void installs(const std::string& build, const std::string& destination) {
    prepare(build, "pace 10");
    Person person;
    ASSERT_TRUE(person.opensImage(kGhostImage));
    EXPECT_THAT(person.main.editions().items(),
                ElementsAre(kArch + "\\Ghost.exe Ver:12.0.0." + build));
    EXPECT_FALSE(person.main.check(kDoNotFormat).enabled());
    person.startsAndConfirms();
    EXPECT_EQ(person.hears(), Text(kTextFinished));
    EXPECT_TRUE(person.leftInPeace());
    EXPECT_TRUE(HoldsSystem(2, 'E'));
    EXPECT_THAT(ArgumentsOf("ghost"),
                ElementsAre(std::string("-noide -clone,mode=pload,src=\"") + kGhostImage +
                            "\":1,dst=" + destination + " -sure"));
    EXPECT_THAT(ToolsRun(), ElementsAre("ghost", "bcdboot", "bcdboot", "bootsect"));
  }
};

TEST_F(Ghost, BuildThatTakesALetter) { installs("10531", "@os:E:"); }
TEST_F(Ghost, BuildThatTakesAnAddress) { installs("10532", "1:3"); }

TEST_F(Ghost, DyingHalfWayBesideAStrangersWindow) {
  faultsAsked_ = true;
  prepare("10531", "pace 10\ndie 57");
  WNDCLASSW stranger{};
  stranger.lpfnWndProc = DefWindowProcW;
  stranger.lpszClassName = L"GhostScreen";
  RegisterClassW(&stranger);
  const HWND window = CreateWindowW(L"GhostScreen", L"Ghost - 99%", WS_OVERLAPPEDWINDOW, 0, 0, 50,
                                    50, nullptr, nullptr, nullptr, nullptr);
  Person person;
  ASSERT_TRUE(person.opensImage(kGhostImage));
  person.startsAndConfirms();
  EXPECT_THAT(person.hears(), testing::HasSubstr(Text(kTextApplyFailed)));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_THAT(ToolsRun(), ElementsAre("ghost"));
  DestroyWindow(window);
}

}  // namespace
}  // namespace e2e
