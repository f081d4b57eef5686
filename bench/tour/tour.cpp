#include "tour/tour.h"

#include <cstdio>

#include "driver/dialogs.h"
#include "driver/main_window.h"
#include "driver/process.h"
#include "ui/system_menu.h"

namespace bench {
namespace {

using namespace pavoline;

constexpr int kShowTime = 30'000;  // milliseconds, for a window to show
constexpr int kApplyTime = 120'000;
constexpr int kSettleTime = 400;

class Guide {
 public:
  Guide(const std::string& program, const Visit& visit)
      : main_(program), program_(program), visit_(visit) {}

  const MainWindow& main() const { return main_; }

  bool show(const std::string& name, const Window& window) const {
    if (!window) return missing(name);
    WaitUntil(kShowTime, [&] { return window.drawn(); });
    Sleep(kSettleTime);
    visit_(name, window);
    return true;
  }

  Window form(const std::string& name) const {
    Window found;
    WaitUntil(kShowTime, [&] {
      found = TopWindow(program_, "Pavoline." + name, "");
      return static_cast<bool>(found);
    });
    return found;
  }

  // Shows or hides the options, which makes the window wider or narrower.
  bool pressF2() const {
    const auto width = [this] {
      const RECT area = main_.window().rectangle();
      return area.right - area.left;
    };
    const LONG before = width();
    main_.window().key(VK_F2);
    return WaitUntil(kShowTime, [&] { return width() != before; }) || missing("effect of F2");
  }

  // Opens a small window, shows it and closes it.
  bool showSmall(const std::string& name, const std::string& formName,
                 const std::function<void()>& open,
                 const std::function<bool(const Window&)>& inside = {}) const {
    open();
    const Window window = form(formName);
    if (!show(name, window) || (inside && !inside(window))) return false;
    window.close();
    const auto ended = [&] { return !window && main_.window().drawn(); };
    return WaitUntil(kShowTime, ended) || missing("end of " + name);
  }

  bool showMessage(const std::string& name, int button) const {
    const auto message = WaitForMessage(program_, kShowTime);
    if (!message) return missing(name);
    return show(name, message->window) && Answer(*message, button);
  }

  // Opens the system menu and a submenu of it, the keyboard's way.
  bool showMenu(const std::string& name, int downs) const {
    SetCursorPos(0, 0);  // a pointer over an entry would choose it
    const Window window = main_.window();
    PostMessageW(window.handle(), WM_SYSCOMMAND, SC_KEYMENU, ' ');
    return showOpened(name, downs);
  }
  // The same entries at the button.
  bool showButtonMenu(const std::string& name, int downs) const {
    SetCursorPos(0, 0);
    main_.menu().click();
    return showOpened(name, downs);
  }
  bool showOpened(const std::string& name, int downs) const {
    const Window window = main_.window();
    if (!WaitUntil(kShowTime, [&] { return menus() > 0; })) return missing(name);
    Sleep(kSettleTime);
    for (int i = 0; i < downs; ++i) press(window, VK_DOWN);
    press(window, VK_RIGHT);
    if (!WaitUntil(kShowTime, [&] { return menus() > 1; })) return missing(name);
    const bool shown = show(name, window);
    PostMessageW(window.handle(), WM_CANCELMODE, 0, 0);
    return (WaitUntil(kShowTime, [&] { return menus() == 0; }) || missing("end of " + name)) &&
           shown;
  }

  bool missing(const std::string& name) const {
    fprintf(stderr, "not shown: %s\n%s", name.c_str(), DumpWindows(program_).c_str());
    return false;
  }

 private:
  static void press(const Window& window, int key) {
    PostMessageW(window.handle(), WM_KEYDOWN, key, 1);
    Sleep(50);
  }
  int menus() const {
    int count = 0;
    for (const Window& window : WindowsOf(program_)) {
      count += window.visible() && window.className() == "#32768";
    }
    return count;
  }

  MainWindow main_;
  std::string program_;
  const Visit& visit_;
};

}  // namespace

bool TourMainWindow(const std::string& program, const Visit& visit) {
  const Guide guide(program, visit);
  const MainWindow& main = guide.main();
  const auto ready = [&] { return main.source().enabled() && !main.editions().items().empty(); };
  if (!main.waitUntilShown(kShowTime) || !WaitUntil(kShowTime, ready)) return guide.missing("main");
  if (!guide.show("main", main.window())) return false;
  if (!guide.pressF2() || !guide.show("main-F2", main.window())) return false;
  return guide.pressF2();
}

bool TourSmallWindows(const std::string& program, const Visit& visit) {
  const Guide guide(program, visit);
  const MainWindow& main = guide.main();
  const auto command = [&](int id) { return [&main, id] { main.window().systemCommand(id); }; };
  const auto choose = [&](int index) { return [&main, index] { main.command(index).click(); }; };
  const auto creation = [&](const Window& window) {
    return guide.showSmall("virtual-disk-creation", "VirtualDiskCreation",
                           [&] { window.child(1002).click(); });
  };
  // The partitions are listed again when the virtual disks' window is closed.
  const auto listed = [] { return !IsRunning("CxDir.exe"); };
  return guide.showSmall("partitions-boot", "PartitionChooser", choose(kChooseBoot)) &&
         guide.showSmall("partitions-install", "PartitionChooser", choose(kChooseInstall)) &&
         guide.showSmall("images", "ImageList", [&] { main.search().click(); }) &&
         guide.showSmall("empty-disk", "PrepareDisk", command(kMenuPrepareDisk)) &&
         guide.showSmall("virtual-disks", "VirtualDiskWindow", command(kMenuVirtualDisk),
                         creation) &&
         WaitUntil(kShowTime, listed) &&
         guide.showSmall("names", "Form2", command(kMenuComputerName)) &&
         guide.showSmall("about", "About", command(kMenuAbout)) &&
         guide.showMenu("menu-tools", 2) && guide.showButtonMenu("menu-modes", 4);
}

bool TourInstallation(const std::string& program, const Visit& visit) {
  const Guide guide(program, visit);
  const MainWindow& main = guide.main();
  main.command(kStart).click();
  const auto question = WaitForMessage(program, kShowTime);
  const auto details = [&] {
    if (question) question->window.child(IDHELP).click();
  };
  if (!guide.showSmall("plan", "PlanText", details)) return false;
  if (!guide.showMessage("message-confirm", IDOK)) return false;
  // The first phase fills the bar as well; the second one, of the data, is to be seen.
  bool secondPhase = false;
  const auto halfWay = [&] {
    const int percent = main.progressBar().progress();
    secondPhase |= percent == 100;
    return secondPhase && percent >= 30 && percent < 100;
  };
  if (!WaitUntil(kApplyTime, halfWay)) return guide.missing("installing");
  if (!guide.show("installing", main.window())) return false;
  main.window().close();
  return guide.showMessage("message-close", IDOK);
}

}  // namespace bench
