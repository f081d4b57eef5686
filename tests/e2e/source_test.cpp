// ISO files, dropped files and the search for images.
#include "person.h"
#include "stage.h"

namespace e2e {
namespace {

using bench::Window;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace pavoline;

class Sources : public OnTheBench {
 protected:
  static bool serves(const Person& person, const std::string& path) {
    return Soon([&] {
      return person.main.source().text() == path && person.main.source().enabled() &&
             person.main.editions().items().size() == 2;
    });
  }

  // What the mount program and the reader of images were asked, in order.
  static std::vector<std::string> story() {
    std::vector<std::string> lines;
    for (const bench::Call& call : bench::JournalCalls()) {
      if (call.tool == "imdisk" || call.tool == "wimlib-imagex") lines.push_back(call.arguments);
    }
    return lines;
  }
};

TEST_F(Sources, DroppedImageThenOneIsoAfterTheOther) {
  Place("small.wim", kImage);
  Place("install.iso", "D:\\first.iso");
  Place("install.iso", "D:\\second.iso");
  {
    Person person;
    person.main.window().dropFiles({kImage, "D:\\first.iso"});
    EXPECT_TRUE(serves(person, kImage));
    person.main.window().dropFiles({"D:\\first.iso"});
    EXPECT_TRUE(serves(person, "F:\\sources\\install.wim"));
    person.main.source().enterText("D:\\second.iso");
    EXPECT_TRUE(serves(person, "G:\\sources\\install.wim"));
    EXPECT_TRUE(Soon([&] { return story().size() == 6; }));
    person.main.window().close();
    EXPECT_TRUE(person.gone(kPatience));
  }
  EXPECT_TRUE(Soon([&] { return story().size() == 7; }));
  EXPECT_THAT(
      story(),
      ElementsAre("info --xml \"D:\\Images\\small.wim\"", "-a -m #: -f \"D:\\first.iso\"",
                  "info --xml \"F:\\sources\\install.wim\"", "-a -m #: -f \"D:\\second.iso\"",
                  "info --xml \"G:\\sources\\install.wim\"", "-D -m F:", "-D -m G:"));
}

TEST_F(Sources, SearchFillsTheListAndOffersAPick) {
  Place("large.wim", "D:\\here.wim");
  Place("large.wim", "D:\\zoo\\far.wim");
  ASSERT_EQ(bench::RunUnix({"bash", "-c", "cd \"$1/volumes/d\" && mkdir -p many/{1..3000}", "mkdir",
                            BenchFolder()}),
            0);
  WriteSettings("SearchType=1\r\nSearchLevel=2");
  Person person;
  // The list is filled at the start, without a window.
  ASSERT_TRUE(Soon([&] {
    return person.main.source().items().size() == 2 &&
           person.main.search().text() == Text(kTextSearch) && person.idle();
  }));
  person.main.window().key(VK_F3);
  Window list = person.sees("ImageList");
  const auto rows = list.childOfClass("SysListView32").rows();
  ASSERT_THAT(rows, SizeIs(2));
  EXPECT_THAT(rows[1], ElementsAre("far.wim", "D:\\zoo\\", "WIM", "401.00MB", testing::_, "D:"));
  list.childOfClass("SysListView32").doubleClickRow(1);
  EXPECT_TRUE(serves(person, "D:\\zoo\\far.wim"));
}

}  // namespace
}  // namespace e2e
