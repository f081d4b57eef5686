#include <gtest/gtest.h>

#include "form/main_layout.h"
#include "support/layout_check.h"

namespace pavoline {

TEST(MainLayout, KeepsControlsApartInsideBothWidths) {
  for (const unsigned locale : {1033u, 2052u, 1028u, 3076u, 1031u, 1041u}) {
    Form1 form;
    LayOutMainWindow(form, locale);
    EXPECT_EQ(form.width(), kWideWidth);
    EXPECT_EQ(testing::LayoutFaults(form), "") << locale;
    ShowStopButton(form, true);
    form.setSize(kNarrowWidth, form.height());
    ShowOptionFrames(form, false);
    EXPECT_EQ(testing::LayoutFaults(form), "") << locale;
  }
}

}  // namespace pavoline
