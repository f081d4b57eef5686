#include <gmock/gmock.h>

#include "form/main_layout.h"
#include "support/layout_check.h"

namespace pavoline {

using namespace ::testing;

TEST(Controls, TellAChangeOnceWhoeverMakesItAndFireOnlyWhenEnabled) {
  CheckBox box;
  TextBox field;
  OptionButton option;
  Button button;
  Timer timer;
  int fired = 0;
  const auto count = [&] { ++fired; };
  box.onChange = field.onChange = option.onChange = button.onClick = timer.onTick = count;
  for (int repeat = 0; repeat < 2; ++repeat) {
    box.setValue(1);
    field.setText("D:");
    option.setChosen(true);
  }
  EXPECT_EQ(fired, 3);
  for (Control* control : std::initializer_list<Control*>{&box, &button})
    control->setEnabled(false);
  box.setValue(0);  // code may set what the user may not
  timer.tick();
  button.press();
  EXPECT_EQ(fired, 4);
  timer.setEnabled(true);
  timer.tick();
  EXPECT_EQ(fired, 5);
}

TEST(Controls, AListShowsItsChosenLineAndAFieldAlsoWhatIsTyped) {
  ComboBox list, field{true};
  std::vector<std::string> seen;  // text at each change
  for (ComboBox* box : {&list, &field}) {
    for (const char* item : {"Home", "Pro", "Pro"}) box->addItem(item);
    box->onChange = [&seen, box] { seen.push_back(box->text()); };
  }
  for (int index : {1, 1, 2, 3, -5}) list.select(index);
  EXPECT_EQ(list.selected(), -1);
  list.setText("Pro");
  EXPECT_EQ(list.selected(), 1);
  list.setText("typed");
  EXPECT_EQ(list.text(), "");
  EXPECT_THAT(seen, ElementsAre("Pro", "Pro", "", "Pro", ""));  // none outside the list

  seen.clear();
  field.select(0);
  for (int repeat = 0; repeat < 2; ++repeat) field.setText("D:\\x.wim");
  EXPECT_EQ(field.selected(), -1);
  for (int repeat = 0; repeat < 2; ++repeat) field.clear();
  EXPECT_THAT(seen, ElementsAre("Home", "D:\\x.wim", ""));
}

TEST(Form, IsUnloadedOnceAndOnlyWhenTheQuestionAllowsIt) {
  Form form("Form1");
  bool allowed = false;
  int unloads = 0;
  form.onQueryUnload = [&] { return allowed; };
  form.onUnload = [&] {
    ++unloads;
    form.unload();
  };
  EXPECT_FALSE(form.close() || form.unloaded());
  allowed = true;
  EXPECT_TRUE(form.close());
  form.unload();
  EXPECT_EQ(unloads, 1);
}

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

}  // namespace pavoline
