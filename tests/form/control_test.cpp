#include "form/control.h"

#include <gmock/gmock.h>

#include "form/form.h"

namespace pavoline {
namespace {

using ::testing::ElementsAre;

TEST(Controls, TellAChangeOnceWhoeverMakesIt) {
  CheckBox box;
  TextBox field;
  OptionButton option;
  int changes = 0;
  box.onChange = field.onChange = option.onChange = [&] { ++changes; };
  for (int repeat = 0; repeat < 2; ++repeat) {
    box.setValue(1);
    field.setText("D:");
    option.setChosen(true);
  }
  EXPECT_EQ(changes, 3);
  box.setEnabled(false);
  box.setValue(0);  // code may set what the user may not
  EXPECT_EQ(changes, 4);
}

TEST(Controls, AHandlerMaySetItsOwnControl) {
  TextBox field;
  field.onChange = [&] { field.setText("D:"); };
  field.setText("d");
  EXPECT_EQ(field.text(), "D:");
}

TEST(Controls, ADisabledButtonIsNotPressed) {
  Button button;
  int presses = 0;
  button.onClick = [&] { ++presses; };
  button.press();
  button.setEnabled(false);
  button.press();
  EXPECT_EQ(presses, 1);
}

class ComboTest : public ::testing::Test {
 protected:
  void fill(ComboBox& box) {
    for (const char* item : {"Home", "Pro", "Pro"}) box.addItem(item);
    box.onChange = [this, &box] { seen_.push_back(box.text()); };
  }
  ComboBox list_, field_{true};
  std::vector<std::string> seen_;  // text at each change
};

TEST_F(ComboTest, AListShowsItsChosenLine) {
  fill(list_);
  for (int index : {1, 1, 2, 3, -5}) list_.select(index);
  EXPECT_THAT(seen_, ElementsAre("Pro", "Pro", ""));  // none outside the list
  EXPECT_EQ(list_.selected(), -1);
  list_.setText("Pro");
  EXPECT_EQ(list_.selected(), 1);
  list_.setText("typed");
  EXPECT_EQ(list_.text(), "");
}

TEST_F(ComboTest, TextTypedIntoAFieldEndsTheSelection) {
  fill(field_);
  field_.select(0);
  field_.setText("D:\\x.wim");
  field_.setText("D:\\x.wim");
  EXPECT_EQ(field_.selected(), -1);
  EXPECT_THAT(seen_, ElementsAre("Home", "D:\\x.wim"));
}

TEST_F(ComboTest, ClearingTellsAChangeOnlyWhenSomethingShowed) {
  fill(field_);
  field_.clear();
  EXPECT_TRUE(seen_.empty());
  EXPECT_TRUE(field_.items().empty());
  field_.setText("x");
  field_.clear();
  EXPECT_THAT(seen_, ElementsAre("x", ""));
}

TEST(ListView, RowsThatAreNewLeaveNoneChosen) {
  ListView list;
  int activations = 0;
  list.onActivate = [&] { ++activations; };
  list.setRows({{"D:"}, {"E:"}});
  list.activate();  // none chosen
  list.select(1);
  list.activate();
  list.setRows({{"F:"}});
  list.activate();
  list.select(1);
  EXPECT_EQ(list.selected(), -1);
  EXPECT_EQ(activations, 1);
}

TEST(ProgressBar, StaysWithinItsMaximum) {
  ProgressBar bar;
  const std::pair<int, int> cases[] = {{150, 100}, {-3, 0}, {40, 40}};
  for (const auto& [set, shown] : cases) {
    bar.setValue(set);
    EXPECT_EQ(bar.value(), shown);
  }
  bar.setMaximum(10);
  EXPECT_EQ(bar.value(), 10);
  bar.setMaximum(0);
  EXPECT_EQ(bar.maximum(), 1);
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
  EXPECT_FALSE(form.close());
  EXPECT_FALSE(form.unloaded());
  allowed = true;
  EXPECT_TRUE(form.close());
  form.unload();
  EXPECT_EQ(unloads, 1);
}

TEST(Timer, TicksOnlyWhileEnabled) {
  Timer timer;
  int ticks = 0;
  timer.onTick = [&] { ++ticks; };
  timer.tick();
  timer.setEnabled(true);
  timer.tick();
  EXPECT_EQ(ticks, 1);
}

}  // namespace
}  // namespace pavoline
