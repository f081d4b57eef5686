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
  void images(const std::vector<std::string>& paths, std::uint64_t bytes = kLimit + 1) {
    for (const std::string& path : paths) files.sized(path, bytes);
  }
  const Paths& search(const std::string& plugins = "") {
    form.combo1.clear();
    SearchImages(session, SearchMode::kDrives, plugins);
    return form.combo1.items();
  }
};

TEST_F(ImageSearch, LooksIntoTheNamedFoldersOfAllDrives) {
  images({"D:\\iso\\b.wim", "D:\\iso\\a.iso", "D:\\iso\\sub\\c.wim", "D:\\d.wim", "E:\\ISO\\e.ESD",
          "E:\\wim\\f.gho", "E:\\other\\g.wim", "G:\\iso\\h.iso"});
  images({"X:\\iso\\current.wim"});  // a partition without letter is not the current drive
  EXPECT_EQ(search(), (Paths{"E:\\wim\\f.gho", "E:\\iso\\e.ESD", "D:\\iso\\b.wim", "D:\\iso\\a.iso",
                             "G:\\iso\\h.iso"}));
  EXPECT_EQ(session.search.found.size(), 5u);
  EXPECT_EQ(session.search.found[0].path, "E:\\wim\\f.gho");
  EXPECT_EQ(session.search.found[0].size, kLimit + 1);
  EXPECT_EQ(session.options.searchDir, "esd,gho,wim,iso,ghost");
  EXPECT_EQ(files.currentFolder, "X:\\Pavoline");

  session.options.searchDir = "other,none";
  EXPECT_EQ(search(), (Paths{"E:\\other\\g.wim"}));
}

TEST_F(ImageSearch, TakesLargeFilesOnly) {
  session.options.searchDir = "iso";
  images({"D:\\iso\\exact.wim"}, kLimit);
  images({"D:\\iso\\BOOT.WIM", "D:\\iso\\large.wim"}, 20 * kLimit);
  images({"D:\\iso\\readme.txt", "D:\\iso\\hidden.wim", "D:\\iso\\a.wimbak"});
  files.folder("D:\\iso\\folder.wim");
  files.attributes("D:\\iso\\hidden.wim", 2 + 32);
  EXPECT_EQ(search(), (Paths{"D:\\iso\\hidden.wim", "D:\\iso\\large.wim"}));
  // What is listed stays, and a second search lists it again.
  SearchImages(session, SearchMode::kDrives, "");
  EXPECT_EQ(form.combo1.items().size(), 4u);
}

TEST_F(ImageSearch, GoesDownToTheLevelAskedFor) {
  images({"D:\\0.wim", "D:\\a\\1.wim", "D:\\a\\b\\2.wim", "D:\\a\\b\\c\\3.wim",
          "D:\\a\\b\\c\\d\\4.wim", "D:\\Windows\\w.wim", "D:\\a\\Program Files (x86)\\w.wim",
          "D:\\a\\b\\USERS\\w.wim", "E:\\e.wim", "G:\\x\\g.iso"});
  session.options.searchType = 1;
  const Paths levels[] = {{"E:\\e.wim", "D:\\0.wim"},
                          {"D:\\a\\1.wim", "G:\\x\\g.iso"},
                          {"D:\\a\\b\\2.wim"},
                          {"D:\\a\\b\\c\\3.wim"}};
  Paths expected;
  for (int level = 0; level < 4; ++level) {
    session.options.searchLevel = level;
    expected.insert(expected.end(), levels[level].begin(), levels[level].end());
    EXPECT_EQ(search(), expected) << level;
  }
}

TEST_F(ImageSearch, InAMountedDriveTheFirstImageBecomesTheSource) {
  images({"F:\\root.iso", "F:\\a\\1.esd", "F:\\a\\2.wim", "F:\\a\\b\\c\\3.wim"});
  session.options.searchLevel = 0;
  SearchImages(session, SearchMode::kMounted, "F:");
  EXPECT_EQ(source(), "F:\\a\\1.esd");
  EXPECT_EQ(editionCount(), 3u);
  EXPECT_EQ(form.combo1.items(), (Paths{"F:\\a\\2.wim"}));  // the level goes on, deeper ones do not
  EXPECT_TRUE(form.combo1.enabled());
  EXPECT_FALSE(session.search.takeFirst);
}

TEST_F(ImageSearch, AMountedDriveWithoutImageLeavesTheOuterSearchAsItWas) {
  images({"D:\\iso\\1.wim", "D:\\iso\\2.wim"});
  time.after(0, [this] { SearchImages(session, SearchMode::kMounted, "C:"); });
  EXPECT_EQ(search().size(), 2u);
  EXPECT_EQ(source(), "");
}

TEST_F(ImageSearch, CanBeStoppedAndPickedFromWhileItRuns) {
  for (int i = 0; i < 9; ++i) images({"D:\\iso\\" + std::to_string(i) + ".wim"});
  session.search.running = true;
  time.after(3, [this] {
    EXPECT_EQ(form.status.text(), "S26 3");
    form.combo1.select(0);
    EXPECT_EQ(editionCount(), 3u);
  });
  time.after(5, [this] { session.search.stop = true; });
  EXPECT_LT(search().size(), 9u);
  EXPECT_EQ(source(), "D:\\iso\\0.wim");
  session.search.stop = false;
  time.after(3, [this] { form.unload(); });
  EXPECT_LT(search().size(), 9u);
}

struct PluginDiscovery : ImageSearch {
  void plugin(const std::string& folder, const std::string& name, const std::string& exe,
              const std::string& parameters = "") {
    files.put(folder + "\\config.ini", "[Option]\r\nPlug-inName=" + name + "\r\nPlug-inExe=" + exe +
                                           "\r\nPlug-inExeParm=" + parameters + "\r\n");
  }
  std::string command(const std::string& name) {
    const std::string* found = session.plugins.find(name);
    return found ? *found : "none";
  }
};

TEST_F(PluginDiscovery, TheFirstOfEqualNamesWins) {
  plugin("X:\\Pavoline\\Plug-in\\a", "Tool", "x.exe");
  plugin("X:\\Pavoline\\Plug-in\\b", "Own", "bin\\own.exe", "/q %bp%");
  plugin("D:\\Plug-in\\c", "Tool", "d.exe");
  plugin("E:\\Plug-in\\d", "Tool", "e.exe");
  files.folder("E:\\Plug-in\\empty");
  for (int round = 0; round < 2; ++round) {
    DiscoverPlugins(session, "Plug-in");
    EXPECT_EQ(form.combo2.items(), (Paths{"Tool", "Own"}));
    EXPECT_EQ(command("Tool"), "E:\\Plug-in\\d\\e.exe");
    EXPECT_EQ(command("Own"), "X:\\Pavoline\\Plug-in\\b\\bin\\own.exe /q %bp%");
    EXPECT_EQ(session.plugins.size(), 2u);
  }
  files.drop("E:\\Plug-in");
  search("Plug-in");
  EXPECT_EQ(command("Tool"), "D:\\Plug-in\\c\\d.exe");
}

TEST_F(PluginDiscovery, DescriptionsThatLeadOutOfTheirFolderAreSkipped) {
  int n = 0;
  for (const char* program :
       {"..\\x.exe", "a\\..\\..\\x.exe", "a/../../x.exe", "C:\\x.exe", "\\x.exe", "/x.exe",
        "C:x.exe", "", ".. \\x.exe", "\\\\srv\\a\\x.exe"}) {
    const std::string name = "P" + std::to_string(n++);
    plugin("D:\\Plug-in\\" + name, name, program);
  }
  plugin("D:\\Plug-in\\nameless", "", "x.exe");
  plugin("D:\\Plug-in\\fine", "Fine", ".\\a..b\\..x.exe");
  DiscoverPlugins(session, "Plug-in");
  EXPECT_EQ(form.combo2.items(), (Paths{"Fine"}));
}

}  // namespace pavoline::testing
