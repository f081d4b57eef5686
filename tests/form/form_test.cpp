#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "form/main_layout.h"
#include "support/layout_check.h"

namespace pavoline {

TEST(MainLayout, KeepsControlsApartInsideBothWidthsInEveryLanguage) {
  const std::filesystem::path folder = PAVOLINE_SOURCE_DIR "/lang";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path());
    std::string widths;  // the usual ones for README.md
    for (std::string line; std::getline(file, line);) {
      if (line.starts_with("Widths=")) widths = line.substr(7);
    }
    Form1 form;
    LayOutMainWindow(form, ReadWidths(widths));
    EXPECT_EQ(form.width(), kWideWidth);
    EXPECT_EQ(testing::LayoutFaults(form), "") << entry.path();
    ShowStopButton(form, true);
    form.setSize(kNarrowWidth, form.height());
    ShowOptionFrames(form, false);
    EXPECT_EQ(testing::LayoutFaults(form), "") << entry.path();
  }
}

TEST(ButtonWidths, AreTheUsualOnesWhenTheListIsOfNoUse) {
  EXPECT_EQ(ReadWidths("80, 70,88,72,101").start, 101);
  for (const char* list :
       {"", "80,70,88,72", "80,70,88,72,100,9", "80,70,88,72,1000", "a,b,c,d,e"}) {
    EXPECT_EQ(ReadWidths(list).start, ButtonWidths().start) << list;
  }
}

}  // namespace pavoline
