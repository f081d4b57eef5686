#include <gmock/gmock.h>

#include "support/workshop.h"
#include "ui/controls.h"
#include "ui/small_windows.h"

namespace pavoline::testing {

using namespace ::testing;

// diskpart by its effect: drive V: comes with "Attach", and goes with "Detach".
struct DiskWorkshop : Workshop {
  DiskWorkshop() {
    processes.onStart("diskpart.exe /S", [this](ToolRun& run) {
      const std::string script = files.text("C:\\Windows\\temp\\vhd.txt");
      scripts.push_back(script);
      if (delayMs < 0) return;
      run.endsAt(100);
      time.after(100 + delayMs, [this, script] {
        if (script.find("Detach") != std::string::npos) drives.remove("V:");
        if (script.find("Attach") != std::string::npos) drives.add("V:");
      });
    });
  }
  void inWindow(std::function<void(Form&)> act) {
    dialogs.modals.push_back(std::move(act));
    ShowVirtualDiskWindow(session);
  }
  // Fills the creation window and presses its button.
  void create(std::function<void(Form&)> fill) {
    inWindow([&](Form& window) {
      dialogs.modals.push_back([&](Form& creation) {
        Nth<TextBox>(creation, 0).setText("D:\\disk.vhd");
        fill(creation);
        ButtonWith(creation, "CreateNow").press();
        stayedOpen = !creation.unloaded();
      });
      ButtonWith(window, "Create").press();
    });
  }

  long delayMs = 0;  // until the drive comes or goes after diskpart's end; negative: never
  bool stayedOpen = false;
  std::vector<std::string> scripts;
};

TEST(VirtualDiskWindow, WaitsForTheDriveThenSaysThatItFailed) {
  using Case = std::tuple<const char*, long, bool, std::vector<std::string>>;
  for (const auto& [button, delay, closed, heard] :
       {Case{"Attach", 4500, false, {"Attached D:\\a b.vhd|VirtualDiskDone|64"}},
        Case{"Attach", -1, false, {"AttachFailed|Information|64"}},
        Case{"Detach", -1, false, {"DetachFailed|Information|64"}},
        Case{"Attach", 4500, true, {}}}) {
    DiskWorkshop w;
    w.delayMs = delay;
    if (button == std::string("Detach")) w.drives.add("V:");
    w.dialogs.files = {"D:\\a b.vhd"};
    w.inWindow([&, text = button, ends = closed](Form& window) {
      w.time.after(50, [&w, &window, ends] {
        for (const char* any : {"Attach", "Detach", "Create"}) ButtonWith(window, any).press();
        EXPECT_FALSE(window.close());
        if (ends) w.form.unload();
      });
      ButtonWith(window, text).press();
    });
    EXPECT_EQ(w.heard(), heard);
    EXPECT_EQ(w.dialogs.openRequests.size() + w.dialogs.shownForms.size(), 2u);
    EXPECT_EQ(w.processes.ranLike("CxDir.exe"), !closed);  // whatever diskpart reported
  }
}

TEST(VirtualDiskCreation, EndsWithTheDiskOrTheProgram) {
  for (const bool closed : {false, true}) {
    DiskWorkshop w;
    w.create([&](Form& creation) {
      Nth<TextBox>(creation, 1).setText("64");
      Nth<ComboBox>(creation).select(0);
      w.time.after(50, [&] {
        ButtonWith(creation, "CreateNow").press();
        EXPECT_FALSE(creation.close());
        if (closed) w.form.unload();
      });
    });
    EXPECT_EQ(w.dialogs.messages.size(), closed ? 0u : 1u);
    EXPECT_TRUE(w.scripts.size() == 1 && !w.stayedOpen);
  }
}

TEST(VirtualDiskCreation, RefusesWithTheFirstReasonAndStaysOpen) {
  const std::tuple<const char*, const char*, int, std::string> cases[] = {
      {"D:\\none\\?", "x", 1, "FolderMissing|Error|16"},
      {"Bin\\a.vhd", "1", 1, "FolderMissing|"},
      {"E:\\a?.vhd", "x", 1, "BadFileName|Tips:|16"},
      {"E:\\a", "x", 1, "BadSize|Tips:|16"},
      {"E:\\a", "1000", 2, "SizeTooLarge|Tips:|16"},
      {"E:\\a", "5", 1, "NotEnoughSpace|Error|16"}};
  for (const auto& [file, size, unit, message] : cases) {
    DiskWorkshop w;
    w.drives.add("E:", kDriveFixed, {}, (std::uint64_t{5} << 30) - 1);
    w.create([&, path = file, text = size, index = unit](Form& creation) {
      Nth<TextBox>(creation, 0).setText(path);
      Nth<TextBox>(creation, 1).setText(text);
      Nth<ComboBox>(creation).select(index);
    });
    EXPECT_THAT(w.heard(), ElementsAre(HasSubstr(message))) << file << " " << size;
    EXPECT_TRUE(w.stayedOpen && w.scripts.empty()) << message;
  }
}

}  // namespace pavoline::testing
