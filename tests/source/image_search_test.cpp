#include "source/image_search.h"

#include <gtest/gtest.h>

#include "source_shop.h"

namespace pavoline::testing {

using Paths = std::vector<std::string>;

constexpr std::uint64_t kLimit = 419'430'400;

struct ImageSearch : ::testing::Test, SourceShop {
  ImageSearch() {
    session.partitions = {{"1:2\tD:\t9GB"}, {"2:1\tE:\t9GB"}, {"2:2\t\t9GB"}};
    drives.add("G:", kDriveCdRom);
  }
  void images(const Paths& paths, std::uint64_t bytes = kLimit + 1) {
    for (const std::string& path : paths) files.sized(path, bytes);
  }
  const Paths& search(const std::string& plugins = "") {
    form.combo1.clear();
    SearchImages(session, SearchMode::kDrives, plugins);
    return form.combo1.items();
  }
  void plugin(const std::string& folder, const std::string& name, const std::string& exe) {
    files.put(folder + "\\config.ini", "[Option]\r\nPlug-inName=" + name + "\r\nPlug-inExe=" + exe +
                                           "\r\nPlug-inExeParm=%bp%\r\n");
  }
};

TEST_F(ImageSearch, TakesTheLargeImagesInTheNamedFoldersOfAllDrives) {
  images({"D:\\iso\\b.wim", "D:\\iso\\a.iso", "D:\\iso\\sub\\c.wim", "D:\\d.wim", "E:\\ISO\\e.ESD",
          "E:\\wim\\f.gho", "G:\\iso\\h.iso", "D:\\iso\\x.txt", "D:\\iso\\BOOT.WIM",
          "D:\\iso\\a.wimbak", "E:\\other\\hidden.wim"});
  images({"X:\\iso\\current.wim"});  // a partition without letter is not the current drive
  images({"D:\\iso\\exact.wim"}, kLimit);
  files.folder("D:\\iso\\folder.wim");
  EXPECT_EQ(search(), (Paths{"E:\\wim\\f.gho", "E:\\iso\\e.ESD", "D:\\iso\\b.wim", "D:\\iso\\a.iso",
                             "G:\\iso\\h.iso"}));
  EXPECT_EQ(session.search.found.at(0).path, "E:\\wim\\f.gho");
  EXPECT_EQ(session.search.found[0].size, kLimit + 1);
  EXPECT_EQ(files.currentFolder, "X:\\Pavoline");

  putSplitImage("D:\\swm\\set"), putSplitImage("D:\\swm\\small");
  files.sized("D:\\swm\\set3.swm", kLimit), files.sized("D:\\swm\\none.swm", kLimit + 1);
  session.search.found.clear();
  session.options.searchDir = "swm";
  EXPECT_EQ(search(), (Paths{"D:\\swm\\set.swm"}));
  EXPECT_EQ(session.search.found.at(0).size, 1490 + 1676 + kLimit);

  files.attributes("E:\\other\\hidden.wim", 2 + 32);
  session.options.searchDir = "other,none";
  EXPECT_EQ(search(), (Paths{"E:\\other\\hidden.wim"}));
}

TEST_F(ImageSearch, GoesDownToTheLevelAskedFor) {
  images({"D:\\0.wim", "D:\\a\\1.wim", "D:\\a\\b\\2.wim", "D:\\a\\b\\c\\3.wim",
          "D:\\a\\b\\c\\d\\4.wim", "D:\\Windows\\w.wim", "D:\\a\\b\\USERS\\w.wim", "G:\\x\\g.iso"});
  session.options.searchType = 1;
  Paths expected;
  for (const Paths& level : {Paths{"D:\\0.wim"},
                             {"D:\\a\\1.wim", "G:\\x\\g.iso"},
                             {"D:\\a\\b\\2.wim"},
                             {"D:\\a\\b\\c\\3.wim"}}) {
    session.options.searchLevel = expected.empty() ? 0 : session.options.searchLevel + 1;
    expected.insert(expected.end(), level.begin(), level.end());
    EXPECT_EQ(search(), expected);
  }
}

TEST_F(ImageSearch, CanBeStoppedAndPickedFromWhileItRuns) {
  for (const char* folder : {"gho", "wim", "iso"}) {
    for (int i = 0; i < 3; ++i)
      images({"D:\\" + std::string(folder) + "\\" + std::to_string(i) + ".wim"});
  }
  session.search.running = true;
  time.after(110, [this] {
    EXPECT_EQ(form.status.text(), "Searching 3");
    form.combo1.select(0);
    EXPECT_EQ(editionCount(), 3u);
    session.search.stop = true;
  });
  EXPECT_LT(search().size(), 9u);
  EXPECT_EQ(source(), "D:\\gho\\0.wim");
}

TEST_F(ImageSearch, OfEqualPluginsTheFirstWinsAndNoneLeadsOutOfItsFolder) {
  plugin("X:\\Pavoline\\Plug-in\\a", "Tool", "x.exe");
  plugin("X:\\Pavoline\\Plug-in\\b", "Own", "bin\\own.exe");
  plugin("D:\\Plug-in\\c", "Tool", "d.exe");
  plugin("E:\\Plug-in\\d", "Tool", ".\\a..b\\..e.exe");
  int n = 0;
  for (const char* program : {"..\\x.exe", "a\\..\\..\\x.exe", "a/../../x.exe", "C:\\x.exe",
                              "/x.exe", "C:x.exe", "", ".. \\x.exe", "\\\\srv\\a\\x.exe"}) {
    plugin("D:\\Plug-in\\" + std::to_string(++n), "P", program);
  }
  for (int round = 0; round < 2; ++round) {
    DiscoverPlugins(session, "Plug-in");
    EXPECT_EQ(form.combo2.items(), (Paths{"Tool", "Own"}));
    EXPECT_EQ(*session.plugins.find("Tool"), "E:\\Plug-in\\d\\.\\a..b\\..e.exe %bp%");
    EXPECT_EQ(*session.plugins.find("Own"), "X:\\Pavoline\\Plug-in\\b\\bin\\own.exe %bp%");
  }
  files.drop("E:\\Plug-in");
  search("Plug-in");
  EXPECT_EQ(*session.plugins.find("Tool"), "D:\\Plug-in\\c\\d.exe %bp%");
}

}  // namespace pavoline::testing
