#include "form/main_layout.h"

#include <gtest/gtest.h>

#include "support/layout_check.h"

namespace pavoline {
namespace {

class MainLayout : public ::testing::TestWithParam<unsigned> {};

TEST_P(MainLayout, KeepsControlsApartInsideBothWidths) {
  Form1 form;
  LayOutMainWindow(form, GetParam());
  EXPECT_EQ(form.width(), kWideWidth);
  EXPECT_EQ(testing::LayoutFaults(form), "");

  form.setSize(kNarrowWidth, form.height());
  ShowOptionFrames(form, false);
  EXPECT_EQ(testing::LayoutFaults(form), "");
}

INSTANTIATE_TEST_SUITE_P(Locales, MainLayout,
                         ::testing::Values(1033u, 2052u, 1028u, 3076u, 1031u, 1041u));

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

TEST(MainLayout, HidesTheOptionFramesWithAllTheyHold) {
  Form1 form;
  LayOutMainWindow(form, 1033);
  const int frameLeft = form.frame[kOptionsFrame].bounds().left;
  for (const bool shown : {false, true}) {
    ShowOptionFrames(form, shown);
    for (const Control* control : form.controls()) {
      const bool inFrames = control->bounds().left >= frameLeft;
      EXPECT_EQ(control->visible(), shown || !inFrames) << control->bounds().left;
    }
  }
}

}  // namespace
}  // namespace pavoline
