#include <gtest/gtest.h>

#include "source_shop.h"

namespace pavoline::testing {

struct ImageSource : ::testing::Test, SourceShop {
  ImageSource() { files.put("D:\\WIN10.WIM"), files.put("D:\\old.gho"); }
};

TEST_F(ImageSource, ListsAnImageFileWhileTheBoxIsDisabled) {
  form.combo1.setText("D:\\WIN10.WIM");
  EXPECT_EQ(processes.ran.at(0),
            "\"X:\\Pavoline\"\\Bin\\wimlib-imagex\\x64\\wimlib-imagex.exe info --xml "
            "\"D:\\WIN10.WIM\" >C:\\Windows\\temp\\WIMInfo.log");
  EXPECT_FALSE(enabledDuringRun);
  EXPECT_TRUE(form.combo1.enabled());
  EXPECT_EQ(editionCount() + session.editions.size(), 6u);
  EXPECT_EQ(edition(), "Home  64-Bit");
  EXPECT_EQ(form.combo[kEditions].tooltip(), form.combo[kEditionDetails].items().at(0));
  EXPECT_EQ(form.focused(), &form.combo[kEditions]);
  EXPECT_FALSE(files.exists("C:\\Windows\\temp\\WIMInfo.log"));

  files.shortNames = false;
  files.put("D:\\100% &\\a b.esd");
  form.combo1.setText("D:\\100% &\\a b.esd");
  EXPECT_TRUE(processes.ranLike("\"D:\\100% &\\a b.esd\""));
}

TEST_F(ImageSource, ListsNothingForOtherPathsAndTheProgramForAGhostImage) {
  CheckBox& box = form.check[kDoNotFormat];
  box.setValue(1);
  files.put("D:\\readme.txt");
  for (const char* path : {"D:\\missing.wim", "D:\\WIN10.WIM ", "D:\\readme.txt", ""}) {
    form.combo1.setText("D:\\old.gho");
    EXPECT_EQ(edition(), "x64\\GhostMissingLine");
    EXPECT_FALSE(box.enabled() || box.ticked());
    form.combo1.setText(path);
    EXPECT_TRUE(session.editions.empty() && editionCount() == 0) << path;
    EXPECT_TRUE(dialogs.messages.empty() && form.combo1.enabled()) << path;
    EXPECT_TRUE(box.enabled() && box.ticked()) << path;
  }
  files.version("X:\\Pavoline\\Bin\\Ghost\\x64\\ghost.exe", "12.0.0.10531");
  form.combo1.setText("D:\\old.gho");
  EXPECT_EQ(edition(), "x64\\Ghost.exe Ver:12.0.0.10531");
  EXPECT_EQ(form.combo[kEditions].tooltip(), "Path:.\\Bin\\Ghost\\x64\\Ghost.exe");
}

TEST_F(ImageSource, PreselectsTheEditionAskedFor) {
  using Case = std::tuple<int, const char*, int, int>;
  for (const auto& [asked, words, selected, left] :
       {Case{0, "", 0, 0}, Case{2, "", 1, 0}, Case{3, "home", 2, 0}, Case{4, "PRO", 1, 4},
        Case{0, "x,pro", 1, 0}, Case{0, "x,y", 0, 0}}) {
    session.commandLine.wimIndex = asked;
    session.options.defaultSysEdition = words;
    form.combo1.setText("");
    form.combo1.setText("D:\\WIN10.WIM");
    EXPECT_EQ(form.combo[kEditions].selected(), selected) << asked << words;
    EXPECT_EQ(session.commandLine.wimIndex, left) << asked << words;
  }
}

TEST_F(ImageSource, TheFirstDroppedFileIsTakenWhenItIsAnImage) {
  SourceDropped(session, {"D:\\readme.txt", "D:\\WIN10.WIM"});
  EXPECT_EQ(source(), "");
  SourceDropped(session, {"D:\\old.gho", "D:\\WIN10.WIM"});
  EXPECT_EQ(source(), "D:\\old.gho");
}

TEST_F(ImageSource, DuringARunAnotherSourceWaitsAndADropOrAPickIsIgnored) {
  form.combo1.addItem("D:\\old.gho");
  time.after(30, [this] { SourceDropped(session, {"D:\\old.gho"}); });
  time.after(50, [this] { form.combo1.select(0); });
  form.combo1.setText("D:\\WIN10.WIM");
  EXPECT_EQ(source(), "D:\\WIN10.WIM");
  EXPECT_EQ(editionCount(), 3u);
  EXPECT_EQ(processes.ran.size(), 1u);

  files.put("D:\\b.wim");
  time.after(50, [this] {
    editions = "Other";
    form.combo1.setText("D:\\b.wim");
    EXPECT_EQ(processes.ran.size(), 2u);  // not beside the run for the first
  });
  editions = "";  // of the one given up
  form.combo1.setText("D:\\win10.wim");
  EXPECT_TRUE(dialogs.messages.empty());
  EXPECT_EQ(edition(), "Other  64-Bit");
  EXPECT_EQ(session.editions.size(), 1u);
}

TEST_F(ImageSource, ASplitImageIsTakenByItsFirstPart) {
  putSplitImage("D:\\img\\a");
  SourceDropped(session, {"D:\\img\\a3.swm"});
  EXPECT_EQ(source(), "D:\\img\\a.swm");
  EXPECT_EQ(editionCount(), 3u);
  EXPECT_EQ(processes.ran.size(), 1u);

  files.put("D:\\img\\b.swm", files.text("D:\\img\\a.swm").replace(30, 1, "?"));  // another image
  for (const char* path : {"D:\\img\\b2.swm", "D:\\img\\renamed.swm", "D:\\img\\a02.swm"}) {
    files.put(path, files.text("D:\\img\\a2.swm"));
    form.combo1.setText(path);
    EXPECT_TRUE(said("NotFirstPart " + std::string(path) + " 2"));
    EXPECT_EQ(source() + edition(), path);
  }
  EXPECT_EQ(processes.ran.size(), 1u);
}

}  // namespace pavoline::testing
