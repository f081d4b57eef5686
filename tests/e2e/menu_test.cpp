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

void choose(const Person& person, int command) { person.main.window().systemCommand(command); }

// The fields of a window in the order of the tab key.
Window field(const Window& window, size_t number) {
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
  makeFolder("D:\\Disks & more");
  Person person;
  choose(person, kMenuVirtualDisk);
  Window disks = person.sees("VirtualDiskWindow");
  person.presses(disks, text(kTextCreate));
  Window creation = person.sees("VirtualDiskCreation");
  field(creation, 0).enterText(file);
  field(creation, 1).enterText("64");
  creation.childOfClass("ComboBox").select(0);
  field(creation, 2).enterText("BENCH");
  person.presses(creation, text(kTextCreateNow));
  const std::string created = person.hears();
  EXPECT_THAT(created, HasSubstr(text(kTextCreated) + " BENCH " + text(kTextCreatedDrive)));
  const std::string drive = created.substr(created.size() - 2) + "\\";
  EXPECT_TRUE(exists(drive)) << drive;

  const auto move = [&](int button, int done) {
    person.presses(disks, text(button));
    ASSERT_TRUE(bench::answerFileDialog(person.main.program(), file, kPatience));
    EXPECT_EQ(person.hears(), text(done, "%F%", file));
  };
  move(kTextDetach, kTextDetached);
  EXPECT_FALSE(exists(drive));
  move(kTextAttach, kTextAttached);
  move(kTextDetach, kTextDetached);
  person.presses(disks, text(kTextClose));
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_EQ(argumentsOf("diskpart").size(), 4u);
}

TEST_F(SystemMenu, CompanionStartedAboutShownModeAppliedBootFilesRepaired) {
  place("small.wim", kImage);
  writeSettings("AutoRestart=0");
  makeFolder("C:\\Program Files\\DiskGenius");
  ASSERT_TRUE(bench::placeCompanion("C:\\Program Files\\DiskGenius\\DiskGenius.exe"));
  Person person;
  choose(person, kMenuPartitions);
  EXPECT_TRUE(soon([] { return argumentsOf("DiskGenius.exe").size() == 1; }));
  person.main.menu().click();
  const auto open = [&] {
    return std::ranges::any_of(bench::windowsOf(person.main.program()), [](const Window& each) {
      return each.visible() && each.className() == "#32768";
    });
  };
  ASSERT_TRUE(soon(open));
  for (const WPARAM key : {VK_UP, VK_UP, VK_RETURN}) {  // About is the last but one
    PostMessageW(person.main.window().handle(), WM_KEYDOWN, key, 1);
  }
  Window about = person.sees("About");
  EXPECT_TRUE(about.childWithText("LICENSE"));
  person.presses(about, text(kTextOk));
  EXPECT_TRUE(soon([&] { return !about; }));

  choose(person, kMenuFirstApplyMode + 6);
  EXPECT_TRUE(
      soon([&] { return person.main.window().text() == "Pavoline Installer - Compact:LZX"; }));
  ASSERT_TRUE(person.opensImage(kImage));
  person.startsAndConfirms();
  EXPECT_EQ(person.hears(), text(kTextFinished));
  EXPECT_THAT(argumentsOf("wimlib-imagex"),
              ElementsAre("apply \"D:\\Images\\small.wim\" 1 E:\\ --compact=lzx"));

  choose(person, kMenuBootRepair);
  EXPECT_EQ(person.hears(),
            text(kTextConfirmBootRepair, "%bp%", "S:") + " " + text(kTextConfirmTail));
  EXPECT_EQ(person.hears(), text(kTextBootReport, "%bp%", "S:") + " [ BIOS + UEFI ] ");
  EXPECT_TRUE(person.leftInPeace());
  EXPECT_THAT(read("S:\\Boot\\BCD"), HasSubstr("windows=E:\\Windows"));
}

}  // namespace
}  // namespace e2e
