#include "ui/system_menu.h"

#include "config/language.h"
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

constexpr unsigned kSimplifiedChinese = 2052;

MenuItem Item(int id, const std::string& text, int image = 0) {
  return {id, text, false, image, {}};
}
MenuItem Separator() { return Item(kMenuSeparator, ""); }

MenuItem Submenu(const std::string& text, int image, std::vector<MenuItem> items) {
  return {0, text, false, image, std::move(items)};
}

std::string ToolText(Session& session, const CompanionTool& tool) {
  const bool chinese = session.platform.environment.threadLocale() == kSimplifiedChinese;
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

// Starting work of its own would get in the way of an installation or of Start's questions, and an
// unattended run must find nothing in its way before it has pressed Start.
bool MayStartWork(const Session& session) {
  const bool startIsDue = session.commandLine.install && !session.autoStarted;
  return !session.form.busy && !session.starting && !startIsDue;
}

void SaveSettings(Session& session) {
  SaveAsIni(session);
  Message(session, String(session, kTextSettingsSaved), kInformationMessage,
          String(session, kTextInformation));
}

void OpenVirtualDisks(Session& session) {
  const std::string diskpart =
      session.platform.environment.variable("windir") + "\\system32\\diskpart.exe";
  if (session.osVersion > 6.0F && session.platform.files.exists(diskpart)) {
    if (MayStartWork(session)) ShowVirtualDiskWindow(session);
    return;
  }
  Message(session,
          String(session, kTextNoVirtualDisks) +
              "\n提示：\n1.System Version < Windows NT 6.1\n"
              "2.Missing system components: [diskpart.exe]",
          kInformationMessage, String(session, kTextInformation));
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

void ShowHelp(Session& session) {
  if (session.platform.environment.variable("SYSTEMDRIVE") == "X:") {
    Message(session, "PE environment help is not available.", kInformationMessage,
            String(session, kTextInformation));
    return;
  }
  OpenHelpPage(session);
}

void RepairBoot(Session& session) {
  if (StartTool(session, *ToolOfCommand(kMenuBootRepair))) return;
  if (MayStartWork(session)) RepairBootFiles(session);
}

struct Command {
  int id;
  void (*run)(Session&);
};

constexpr Command kCommands[] = {
    {kMenuSaveSettings, SaveSettings},
    {kMenuComputerName, ShowComputerNameDialog},
    {kMenuVirtualDisk, OpenVirtualDisks},
    {kMenuHelp, ShowHelp},
    {kMenuAbout, ShowAbout},
    {kMenuLanguageFile, SaveLanguageFile},
    {kMenuBootRepair, RepairBoot},
};

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
      Separator(),
      Item(kMenuHelp, text(kTextHelp) + "(&H)", PAVOLINE_ICON_HELP),
      Item(kMenuAbout, text(kTextAbout) + "(&A)", PAVOLINE_ICON_ABOUT),
      Item(kMenuLanguageFile, text(kTextLanguageFile), PAVOLINE_ICON_LANGUAGE),
      Separator(),
  });
}

bool HandleSystemCommand(Session& session, int id) {
  if (ChooseApplyMode(session, id)) return true;
  for (const Command& command : kCommands) {
    if (command.id != id) continue;
    command.run(session);
    return true;
  }
  const CompanionTool* tool = ToolOfCommand(id);
  if (!tool) return false;
  StartTool(session, *tool);
  return true;
}

}  // namespace pavoline
