#include "ui/system_menu.h"

#include <algorithm>
#include <optional>

#include "config/language.h"
#include "config/locales.h"
#include "config/settings_file.h"
#include "form/text_numbers.h"
#include "platform/dialogs.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "resource_ids.h"
#include "ui/apply_mode.h"
#include "ui/boot_repair.h"
#include "ui/companion_tools.h"
#include "ui/help_page.h"
#include "ui/small_windows.h"

namespace pavoline {
namespace {

MenuItem Item(int id, const std::string& text, int image = 0) {
  return {id, text, false, image, {}, true};
}
MenuItem Separator() { return Item(kMenuSeparator, ""); }

MenuItem Submenu(const std::string& text, int image, std::vector<MenuItem> items) {
  return {0, text, false, image, std::move(items), true};
}

std::string ToolText(Session& session, const CompanionTool& tool) {
  const bool chinese = LocaleOf(session.language).chineseTools;
  return std::string(chinese ? tool.chineseName : tool.name) + "\tCtrl+" +
         static_cast<char>(tool.keyCode);
}

// Tools that are there; the program has a boot repair of its own for want of the other.
std::vector<MenuItem> ToolItems(Session& session) {
  std::vector<MenuItem> items;
  for (const CompanionTool& tool : CompanionTools()) {
    if (!FindTool(session, tool).empty()) {
      items.push_back(Item(tool.commandId, ToolText(session, tool), tool.image));
    } else if (tool.commandId == kMenuBootRepair) {
      items.push_back(
          Item(tool.commandId, String(session, kTextBootRepairMenu) + "(&R)", tool.image));
    }
  }
  return items;
}

std::vector<MenuItem> ApplyModeItems() {
  std::vector<MenuItem> items;
  for (const ApplyMode& mode : ApplyModes()) items.push_back(Item(mode.commandId, mode.menuText));
  items.front().checked = true;
  return items;
}

void SaveSettings(Session& session) {
  if (SaveAsIni(session)) {
    // The text names the usual file; another may have been read.
    Message(session,
            ReplaceAll(String(session, kTextSettingsSaved), "Pavoline.ini",
                       FileName(session.paths.settingsPath)),
            kInformationMessage, String(session, kTextInformation));
    return;
  }
  Message(session, ReplaceAll(String(session, kTextCannotWrite), "%f%", session.paths.settingsPath),
          kErrorMessage, String(session, kTextError));
}

std::string DiskpartPath(Ground& ground) {
  return ground.platform.environment.variable("windir") + "\\system32\\diskpart.exe";
}

void OpenVirtualDisks(Session& session) {
  if (session.osVersion > 6.0F && session.platform.files.exists(DiskpartPath(session))) {
    ShowVirtualDiskWindow(session);
    return;
  }
  Message(session,
          String(session, kTextNoVirtualDisks) +
              "\n提示：\n1.System Version < Windows NT 6.1\n"
              "2.Missing system components: [diskpart.exe]",
          kInformationMessage, String(session, kTextInformation));
}

void OpenDiskPreparation(Session& session) {
  const std::string diskpart = DiskpartPath(session);
  if (session.platform.files.exists(diskpart)) {
    PrepareEmptyDisk(session);
    return;
  }
  Message(session, ReplaceAll(More(session, kMoreNotStarted), "%f%", diskpart), kErrorMessage,
          String(session, kTextError));
}

void SaveLanguageFile(Session& session) {
  FileRequest request;
  request.filters = {{"Language Files(*.lng)", "*.lng"}};
  request.initialFolder = session.paths.appDir + "\\lang\\";
  std::string path = session.platform.dialogs.saveFile(request);
  if (path.empty()) return;
  if (LastFourLower(path) != ".lng") path += ".lng";
  if (WriteLanguageFile(session, path)) return;
  Message(session, ReplaceAll(String(session, kTextCannotWrite), "%f%", path), kErrorMessage,
          String(session, kTextError));
}

void RepairBoot(Session& session) {
  if (StartTool(session, *ToolOfCommand(kMenuBootRepair))) return;
  RepairBootFiles(session);
}

struct Command {
  int id;
  Action action;
  void (*run)(Session&);
};

constexpr Command kCommands[] = {
    {kMenuSaveSettings, Action::kSetOptions, SaveSettings},
    {kMenuComputerName, Action::kSetOptions, ShowComputerNameDialog},
    {kMenuVirtualDisk, Action::kVirtualDisks, OpenVirtualDisks},
    {kMenuPrepareDisk, Action::kPrepareDisk, OpenDiskPreparation},
    {kMenuHelp, Action::kLook, OpenHelpPage},
    {kMenuAbout, Action::kLook, ShowAbout},
    {kMenuLanguageFile, Action::kLook, SaveLanguageFile},
    {kMenuBootRepair, Action::kRepairBoot, RepairBoot},
};

// What a menu command does; nothing for what is none of the program's.
std::optional<Action> ActionOf(int id) {
  for (const Command& command : kCommands) {
    if (command.id == id) return command.action;
  }
  if (ToolOfCommand(id) != nullptr) return Action::kStartTool;
  const bool mode =
      std::ranges::find(ApplyModes(), id, &ApplyMode::commandId) != ApplyModes().end();
  return mode ? std::optional(Action::kSetOptions) : std::nullopt;
}

// What cannot be done now is grey.
bool GreyItems(const Session& session, std::vector<MenuItem>& items) {
  bool changed = false;
  for (MenuItem& item : items) {
    const auto action = ActionOf(item.id);
    const bool enabled = !action || May(session, *action);
    changed = changed || enabled != item.enabled;
    item.enabled = enabled;
    if (GreyItems(session, item.items)) changed = true;
  }
  return changed;
}

void GreyMenu(Session& session) {
  std::vector<MenuItem> menu = session.form.systemMenu();
  if (GreyItems(session, menu)) session.form.setSystemMenu(std::move(menu));
}

}  // namespace

void BuildSystemMenu(Session& session) {
  const auto text = [&](int n) { return String(session, n); };
  session.form.setSystemMenu({
      Item(kMenuSaveSettings, text(kTextSaveSettings), PAVOLINE_ICON_SAVE),
      Item(kMenuComputerName, text(kTextNamesMenu) + "\tCtrl+N", PAVOLINE_ICON_COMPUTER_NAME),
      Separator(),
      Submenu(text(kTextTools), PAVOLINE_ICON_TOOLS, ToolItems(session)),
      Submenu(text(kTextApplyMode), PAVOLINE_ICON_APPLY_MODE, ApplyModeItems()),
      Item(kMenuVirtualDisk, text(kTextVirtualDisk) + "(&V)", PAVOLINE_ICON_VIRTUAL_DISK),
      Item(kMenuPrepareDisk, More(session, kMorePrepareMenu), PAVOLINE_ICON_PARTITION),
      Separator(),
      Item(kMenuHelp, text(kTextHelp) + "(&H)", PAVOLINE_ICON_HELP),
      Item(kMenuAbout, text(kTextAbout) + "(&A)", PAVOLINE_ICON_ABOUT),
      Item(kMenuLanguageFile, text(kTextLanguageFile), PAVOLINE_ICON_LANGUAGE),
      Separator(),
  });
  session.activityChanged = [&session] { GreyMenu(session); };
  GreyMenu(session);
}

void OpenMenu(Session& session) {
  Form1& form = session.form;
  std::vector<MenuItem> items = form.systemMenu();
  if (!items.empty() && items.back().separator()) items.pop_back();  // towards the system's own
  HandleSystemCommand(session, session.platform.dialogs.chooseFromMenu(form, form.menu, items));
}

bool HandleSystemCommand(Session& session, int id) {
  const auto action = ActionOf(id);
  if (!action) return false;
  // The item is grey, but a key or another program may have chosen it.
  if (!May(session, *action)) return true;
  if (ChooseApplyMode(session, id)) return true;
  for (const Command& command : kCommands) {
    if (command.id != id) continue;
    command.run(session);
    return true;
  }
  StartTool(session, *ToolOfCommand(id));
  return true;
}

}  // namespace pavoline
