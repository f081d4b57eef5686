// The commands of the system menu and the windows that they open.
#include "person.h"
#include "stage.h"
#include "ui/system_menu.h"

namespace e2e {
namespace {

using bench::Window;
using testing::ElementsAre;
using testing::HasSubstr;
using namespace pavoline;

class SystemMenu : public OnTheBench {};

void Choose(const Person& person, int command) { person.main.window().systemCommand(command); }

// The fields of a window in the order of the tab key.
Window FieldOf(const Window& window, size_t number) {
  std::vector<Window> fields;
  for (const Window& child : window.children()) {
    if (child.className() == "Edit") fields.push_back(child);
  }
  std::sort(fields.begin(), fields.end(),
            [](const Window& a, const Window& b) { return a.rectangle().top < b.rectangle().top; });
  return number < fields.size() ? fields[number] : Window();
}

TEST_F(SystemMenu, VirtualDiskCreatedDetachedAndAttached) {
  const std::string file = "D:\\Disks & more\\new disk.vhd";
  MakeFolder("D:\\Disks & more");
  Person person;
  Choose(person, kMenuVirtualDisk);
  Window disks = person.sees("VirtualDiskWindow");
  person.presses(disks, Text(kTextCreate));
  Window creation = person.sees("VirtualDiskCreation");
  FieldOf(creation, 0).enterText(file);
  FieldOf(creation, 1).enterText("64");
  creation.childOfClass("ComboBox").select(0);
  FieldOf(creation, 2).enterText("BENCH");
  person.presses(creation, Text(kTextCreateNow));
  const std::string created = person.hears();
  EXPECT_THAT(created, HasSubstr(Text(kTextCreated) + " BENCH " + Text(kTextCreatedDrive)));
  const std::string drive = created.substr(created.size() - 2) + "\\";
  EXPECT_TRUE(Exists(drive)) << drive;

  const auto move = [&](int button, int done) {
    person.presses(disks, Text(button));
    ASSERT_TRUE(bench::AnswerFileDialog(person.main.program(), file, kPatience));
    EXPECT_EQ(person.hears(), Text(done, "%F%", file));
  };
  move(kTextDetach, kTextDetached);
  EXPECT_FALSE(Exists(drive));
  move(kTextAttach, kTextAttached);
  move(kTextDetach, kTextDetached);
  person.presses(disks, Text(kTextClose));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_EQ(ArgumentsOf("diskpart").size(), 4u);
}

TEST_F(SystemMenu, CompanionStartedAboutShownModeAppliedBootFilesRepaired) {
  Place("small.wim", kImage);
  WriteSettings("AutoRestart=0");
  MakeFolder("C:\\Program Files\\DiskGenius");
  ASSERT_TRUE(bench::PlaceCompanion("C:\\Program Files\\DiskGenius\\DiskGenius.exe"));
  Person person;
  Choose(person, kMenuPartitions);
  EXPECT_TRUE(Soon([] { return ArgumentsOf("DiskGenius.exe").size() == 1; }));
  person.main.menu().click();
  const auto open = [&] {
    return std::ranges::any_of(bench::WindowsOf(person.main.program()), [](const Window& each) {
      return each.visible() && each.className() == "#32768";
    });
  };
  ASSERT_TRUE(Soon(open));
  for (const WPARAM key : {VK_UP, VK_UP, VK_RETURN}) {  // About is the last but one
    PostMessageW(person.main.window().handle(), WM_KEYDOWN, key, 1);
  }
  Window about = person.sees("About");
  EXPECT_TRUE(about.childWithText("LICENSE"));
  person.presses(about, Text(kTextOk));
  EXPECT_TRUE(Soon([&] { return !about; }));

  Choose(person, kMenuFirstApplyMode + 6);
  EXPECT_TRUE(
      Soon([&] { return person.main.window().text() == "Pavoline Installer - Compact:LZX"; }));
  ASSERT_TRUE(person.opensImage(kImage));
  person.startsAndConfirms();
  EXPECT_EQ(person.hears(), Text(kTextFinished));
  EXPECT_THAT(ArgumentsOf("wimlib-imagex"),
              ElementsAre("apply \"D:\\Images\\small.wim\" 1 E:\\ --compact=lzx"));

  Choose(person, kMenuBootRepair);
  EXPECT_EQ(person.hears(),
            Text(kTextConfirmBootRepair, "%bp%", "S:") + " " + Text(kTextConfirmTail));
  EXPECT_EQ(person.hears(), Text(kTextBootReport, "%bp%", "S:") + " [ BIOS + UEFI ] ");
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_THAT(Read("S:\\Boot\\BCD"), HasSubstr("windows=E:\\Windows"));
}

}  // namespace
}  // namespace e2e
