#include "ui/small_windows.h"

#include <gmock/gmock.h>

#include "support/layout_check.h"
#include "support/workshop.h"
#include "ui/controls.h"
#include "version.h"

namespace pavoline::testing {
namespace {

using ::testing::ElementsAre;

struct ChooserWorkshop : Workshop {
  ChooserWorkshop() {
    session.bootRows = {{{"S:", "System", "Disk A", "FAT32", "260.00MB"}},
                        {{"D:", "", "Disk B", "NTFS", "0.50GB"}}};
    session.installRows = {{{"D:", "Data", "Disk B", "NTFS", "100.00GB"}},
                           {{"E:", "Work", "Disk B", "NTFS", "365.76GB"}}};
    form.text[kInstallPartition].setText("E:");
  }
  void whenShown(std::function<void(Form&, ListView&)> act) {
    dialogs.modals.push_back([act](Form& window) { act(window, Nth<ListView>(window)); });
  }
  std::string boot() const { return form.text[kBootPartition].text(); }
  std::string install() const { return form.text[kInstallPartition].text(); }
};

TEST(PartitionChooser, ShowsTheRowsOfItsPurposeWithTheCurrentOneChosen) {
  ChooserWorkshop w;
  w.whenShown([](Form& window, ListView& list) {
    EXPECT_EQ(window.caption(), "S52");
    std::vector<std::string> titles;
    for (const ListColumn& column : list.columns()) titles.push_back(column.title);
    EXPECT_THAT(titles, ElementsAre("S46", "S47", "S48", "S49", "S50"));
    EXPECT_THAT(list.rows(), ElementsAre(ElementsAre("D:", "Data", "Disk B", "NTFS", "100.00GB"),
                                         ElementsAre("E:", "Work", "Disk B", "NTFS", "365.76GB")));
    EXPECT_EQ(list.selected(), 1);
    EXPECT_EQ(window.defaultButton, &ButtonWith(window, "S9"));
    EXPECT_EQ(window.cancelButton, &ButtonWith(window, "S10"));
    EXPECT_EQ(window.focused(), &list);
  });
  ShowPartitionChooser(w.session, PartitionPurpose::kInstall);
  EXPECT_EQ(w.install(), "E:");

  w.whenShown([](Form& window, ListView& list) {
    EXPECT_EQ(window.caption(), "S51");
    EXPECT_EQ(list.rows()[1].front(), "D:");
    EXPECT_EQ(list.selected(), 0);  // the field is empty
  });
  ShowPartitionChooser(w.session, PartitionPurpose::kBoot);
  EXPECT_EQ(w.boot(), "");
}

TEST(PartitionChooser, TakesARowByButtonAndByDoubleClick) {
  ChooserWorkshop w;
  w.whenShown([](Form& window, ListView& list) {
    list.select(0);
    window.defaultButton->press();
    EXPECT_TRUE(window.unloaded());
  });
  ShowPartitionChooser(w.session, PartitionPurpose::kInstall);
  EXPECT_EQ(w.install(), "D:");

  w.whenShown([](Form& window, ListView& list) {
    list.select(1);
    list.activate();
    EXPECT_TRUE(window.unloaded());
  });
  ShowPartitionChooser(w.session, PartitionPurpose::kBoot);
  EXPECT_EQ(w.boot(), "D:");

  w.whenShown([](Form& window, ListView& list) {
    list.select(1);
    window.cancelButton->press();
    EXPECT_TRUE(window.unloaded());
  });
  ShowPartitionChooser(w.session, PartitionPurpose::kInstall);
  EXPECT_EQ(w.install(), "D:");

  w.whenShown([](Form& window, ListView& list) {
    list.select(-1);
    window.defaultButton->press();
    EXPECT_FALSE(window.unloaded());
  });
  ShowPartitionChooser(w.session, PartitionPurpose::kInstall);
  EXPECT_EQ(w.install(), "D:");
}

TEST(PartitionChooser, SaysThatNothingIsThere) {
  ChooserWorkshop w;
  w.session.installRows.clear();
  w.whenShown([](Form& window, ListView& list) {
    EXPECT_FALSE(list.visible());
    EXPECT_TRUE(Nth<Label>(window).visible());
    EXPECT_EQ(Nth<Label>(window).text(), "S53");
    EXPECT_FALSE(window.defaultButton->enabled());
    window.cancelButton->press();
    EXPECT_TRUE(window.unloaded());
  });
  ShowPartitionChooser(w.session, PartitionPurpose::kInstall);
  EXPECT_EQ(w.install(), "E:");
}

TEST(ComputerNameDialog, ShowsAndStoresTheNamesHoweverItIsClosed) {
  Workshop w;
  w.session.options.pcUser = "Ann";
  const std::function<void(Form&)> waysToClose[] = {
      [](Form& window) { window.defaultButton->press(); },
      [](Form& window) { window.cancelButton->press(); }, [](Form& window) { window.close(); },
      [](Form&) {},  // closed from outside
  };
  for (const auto& closeIt : waysToClose) {
    w.session.options.computerName = "OLD";
    w.session.options.workGroup = "";
    w.dialogs.modals.push_back([&](Form& window) {
      EXPECT_EQ(window.name(), "Form2");
      EXPECT_EQ(Nth<Label>(window, 0).text(), "S56");
      EXPECT_EQ(Nth<Label>(window, 1).text(), "S57");
      EXPECT_EQ(Nth<Label>(window, 2).text(), "S58");
      EXPECT_EQ(Nth<ComboBox>(window).text(), "Ann");
      EXPECT_EQ(Nth<TextBox>(window, 0).text(), "OLD");
      EXPECT_EQ(Nth<TextBox>(window, 1).text(), "WorkGroup");
      Nth<TextBox>(window, 0).setText("NEW");
      closeIt(window);
    });
    ShowComputerNameDialog(w.session);
    EXPECT_EQ(w.session.options.pcUser, "Ann");
    EXPECT_EQ(w.session.options.computerName, "NEW");
    EXPECT_EQ(w.session.options.workGroup, "WorkGroup");
  }
  EXPECT_FALSE(w.files.exists(w.session.paths.settingsPath));  // that is another command's work
}

TEST(ComputerNameDialog, HoldsNamesToTheirLengthAndTypedCharacters) {
  Workshop w;
  w.dialogs.modals.push_back([](Form& window) {
    auto& user = Nth<ComboBox>(window);
    user.setText("123456789012345678901");                 // pasted
    Nth<TextBox>(window, 0).setText("A_234567890123456");  // not filtered either
    Nth<TextBox>(window, 1).setText("G23456789012345tail");
    const KeyFilter filters[] = {user.onKeyPress, Nth<TextBox>(window, 0).onKeyPress,
                                 Nth<TextBox>(window, 1).onKeyPress};
    for (const KeyFilter& taken : filters) {
      for (const char32_t c : U"09azAZ-\b") {
        EXPECT_TRUE(c == 0 || taken(c)) << static_cast<unsigned>(c);
      }
      for (const char32_t c : U"_ .@/:[`{\u00e4\u4e2d\uff11") {
        EXPECT_FALSE(c != 0 && taken(c)) << static_cast<unsigned>(c);
      }
    }
  });
  ShowComputerNameDialog(w.session);
  EXPECT_EQ(w.session.options.pcUser, "12345678901234567890");
  EXPECT_EQ(w.session.options.computerName, "A_2345678901234");
  EXPECT_EQ(w.session.options.workGroup, "G23456789012345");
}

TEST(ComputerNameDialog, KeepsItsFieldsAsHighAsTheDropDownBox) {
  Workshop w;
  w.dialogs.modals.push_back([](Form& window) {
    auto& user = Nth<ComboBox>(window);
    EXPECT_EQ(Nth<TextBox>(window, 0).bounds().height, user.bounds().height);
    Rect taller = user.bounds();
    taller.height += 60;
    user.setBounds(taller);
    user.onDropDown();
    EXPECT_EQ(Nth<TextBox>(window, 0).bounds().height, taller.height);
    EXPECT_EQ(Nth<TextBox>(window, 1).bounds().height, taller.height);
  });
  ShowComputerNameDialog(w.session);
}

struct ImageListWorkshop : Workshop {
  ImageListWorkshop() {
    session.search.found = {{"D:\\iso\\my disc.iso", 5ull << 30, "2024-01-02 03:04"},
                            {"E:\\install.wim", 700ull << 20, "2023-12-31 23:59"}};
  }
};

TEST(ImageList, ShowsSixColumnsAndMakesThePickTheSource) {
  ImageListWorkshop w;
  std::string sourceWhileOpen;
  w.dialogs.modals.push_back([&](Form& window) {
    EXPECT_EQ(window.caption(), "S61");
    auto& list = Nth<ListView>(window);
    std::vector<std::string> titles;
    for (const ListColumn& column : list.columns()) titles.push_back(column.title);
    EXPECT_THAT(titles, ElementsAre("S74", "S75", "S76", "S50", "S77", "S46"));
    EXPECT_THAT(
        list.rows(),
        ElementsAre(
            ElementsAre("my disc.iso", "D:\\iso\\", "ISO", "5.00GB", "2024-01-02 03:04", "D:"),
            ElementsAre("install.wim", "E:\\", "WIM", "700.00MB", "2023-12-31 23:59", "E:")));
    list.select(1);
    list.activate();
    EXPECT_TRUE(window.unloaded());
    sourceWhileOpen = w.form.combo1.text();
  });
  ShowImageList(w.session);
  EXPECT_EQ(sourceWhileOpen, "");
  EXPECT_EQ(w.form.combo1.text(), "E:\\install.wim");

  w.dialogs.modals.push_back([](Form& window) {
    EXPECT_EQ(Nth<ListView>(window).selected(), 1);
    Nth<ListView>(window).select(0);
    window.cancelButton->press();
  });
  ShowImageList(w.session);
  EXPECT_EQ(w.form.combo1.text(), "E:\\install.wim");
}

TEST(ImageList, LeavesTheSourceAloneOnceAnInstallationRuns) {
  ImageListWorkshop w;
  w.dialogs.modals.push_back([&](Form& window) {
    w.form.busy = true;
    window.defaultButton->press();
  });
  ShowImageList(w.session);
  EXPECT_EQ(w.form.combo1.text(), "");

  w.form.busy = false;
  w.session.search.found.clear();
  w.dialogs.modals.push_back([](Form& window) {
    EXPECT_FALSE(window.defaultButton->enabled());
    window.defaultButton->press();
    EXPECT_FALSE(window.unloaded());
  });
  ShowImageList(w.session);
  EXPECT_EQ(w.form.combo1.text(), "");
}

TEST(About, TellsTheVersionAndOpensItsLinks) {
  Workshop w;
  w.session.titleCaption = "Pavoline Installer";
  w.files.put("X:\\Pavoline\\LICENSE");
  w.dialogs.modals.push_back([&](Form& window) {
    EXPECT_EQ(Nth<Label>(window, 0).text(), "Pavoline Installer");
    EXPECT_EQ(Nth<Label>(window, 1).text(), "S112 " PAVOLINE_VERSION_TEXT);
    EXPECT_EQ(Nth<Label>(window, 2).text(), "S110");
    Nth<Link>(window, 0).press();
    Nth<Link>(window, 1).press();
    EXPECT_TRUE(w.processes.started.empty());
    w.dialogs.canOpenDocuments = false;
    w.files.put("C:\\Windows\\System32\\notepad.exe");
    Nth<Link>(window, 0).press();
    window.defaultButton->press();
    EXPECT_TRUE(window.unloaded());
  });
  ShowAbout(w.session);
  EXPECT_THAT(w.dialogs.documents,
              ElementsAre("X:\\Pavoline\\LICENSE", "X:\\Pavoline\\Help\\1033.html",
                          "X:\\Pavoline\\LICENSE"));
  EXPECT_TRUE(w.processes.ranLike("notepad.exe \"X:\\Pavoline\\LICENSE\""));
}

TEST(SmallWindows, KeepTheirControlsApart) {
  ChooserWorkshop w;
  std::string faults;
  const auto look = [&faults](Form& window) { faults += LayoutFaults(window); };
  const auto show = [&](void (*window)(Session&)) {
    w.dialogs.modals.push_back(look);
    window(w.session);
  };
  const auto chooser = [](Session& s) { ShowPartitionChooser(s, PartitionPurpose::kInstall); };
  show(chooser);
  w.session.installRows.clear();
  show(chooser);
  for (const auto window : {ShowComputerNameDialog, ShowImageList, ShowAbout}) show(window);
  w.dialogs.modals = {[&](Form& window) {
                        look(window);
                        ButtonWith(window, "S90").press();
                      },
                      look};
  ShowVirtualDiskWindow(w.session);
  EXPECT_EQ(w.dialogs.shownForms.size(), 7u);
  EXPECT_EQ(faults, "");
}

}  // namespace
}  // namespace pavoline::testing
