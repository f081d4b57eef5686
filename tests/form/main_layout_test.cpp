#include "form/main_layout.h"

#include <gtest/gtest.h>

#include "support/layout_check.h"

namespace pavoline {

TEST(MainLayout, KeepsControlsApartInsideBothWidths) {
  for (const unsigned locale : {1033u, 2052u, 1028u, 3076u, 1031u, 1041u}) {
    Form1 form;
    LayOutMainWindow(form, locale);
    EXPECT_EQ(form.width(), kWideWidth);
    EXPECT_EQ(testing::LayoutFaults(form), "") << locale;
    form.setSize(kNarrowWidth, form.height());
    ShowOptionFrames(form, false);
    EXPECT_EQ(testing::LayoutFaults(form), "") << locale;
  }
}

TEST(MainLayout, FollowsTheLanguage) {
  const auto startWidth = [](unsigned locale) {
    Form1 form;
    LayOutMainWindow(form, locale);
    return form.command1[kStart].bounds().width;
  };
  EXPECT_EQ(startWidth(2052), startWidth(1028));
  EXPECT_EQ(startWidth(2052), startWidth(3076));
  EXPECT_LT(startWidth(2052), startWidth(1033));
  EXPECT_GT(startWidth(1031), startWidth(1033));
  EXPECT_GT(startWidth(1041), startWidth(1033));
}

}  // namespace pavoline
