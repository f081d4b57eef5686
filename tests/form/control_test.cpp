#include "form/control.h"

#include <gmock/gmock.h>

#include "form/form.h"

namespace pavoline {

using namespace ::testing;

TEST(Controls, TellAChangeOnceWhoeverMakesItAndFireOnlyWhenEnabled) {
  CheckBox box;
  TextBox field;
  OptionButton option;
  Button button;
  Timer timer;
  int fired = 0;
  box.onChange = field.onChange = option.onChange = button.onClick =
      timer.onTick = [&] { ++fired; };
  for (int repeat = 0; repeat < 2; ++repeat) {
    box.setValue(1);
    field.setText("D:");
    option.setChosen(true);
  }
  EXPECT_EQ(fired, 3);
  box.setEnabled(false);
  box.setValue(0);  // code may set what the user may not
  timer.tick();
  button.press();
  EXPECT_EQ(fired, 5);
  timer.setEnabled(true);
  button.setEnabled(false);
  timer.tick();
  button.press();
  EXPECT_EQ(fired, 6);
}

struct ComboTest : Test {
  ComboTest() {
    for (ComboBox* box : {&list, &field}) {
      for (const char* item : {"Home", "Pro", "Pro"}) box->addItem(item);
      box->onChange = [this, box] { seen.push_back(box->text()); };
    }
  }
  ComboBox list, field{true};
  std::vector<std::string> seen;  // text at each change
};

TEST_F(ComboTest, AListShowsItsChosenLine) {
  for (int index : {1, 1, 2, 3, -5}) list.select(index);
  EXPECT_THAT(seen, ElementsAre("Pro", "Pro", ""));  // none outside the list
  EXPECT_EQ(list.selected(), -1);
  list.setText("Pro");
  EXPECT_EQ(list.selected(), 1);
  list.setText("typed");
  EXPECT_EQ(list.text(), "");
}

TEST_F(ComboTest, TextTypedIntoAFieldEndsTheSelectionAndClearingTellsItOnce) {
  field.select(0);
  for (int repeat = 0; repeat < 2; ++repeat) field.setText("D:\\x.wim");
  EXPECT_EQ(field.selected(), -1);
  for (int repeat = 0; repeat < 2; ++repeat) field.clear();
  EXPECT_THAT(seen, ElementsAre("Home", "D:\\x.wim", ""));
  EXPECT_TRUE(field.items().empty());
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

}  // namespace pavoline
