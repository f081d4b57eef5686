#include "ui/companion_tools.h"

#include <algorithm>

#include "platform/files.h"
#include "resource_ids.h"
#include "run/command_runner.h"
#include "run/command_words.h"
#include "ui/system_menu.h"

namespace pavoline {
namespace {

constexpr CompanionTool kTools[] = {
    {kMenuBackup, 'B', PAVOLINE_ICON_BACKUP, "Brantor", "系统备份 ", "\\Brantor\\Brantor.exe",
     "\\Brantor.exe", true},
    {kMenuBootRepair, 'R', PAVOLINE_ICON_BOOT_REPAIR, "Quillet", "引导修复 ",
     "\\Quillet\\Quillet.exe", "\\Quillet.exe", true},
    {kMenuPartitions, 'D', PAVOLINE_ICON_PARTITION, "DiskGenius", "硬盘分区 ",
     "\\DiskGenius\\DiskGenius.exe", nullptr, false},
    {kMenuGhost, 'G', PAVOLINE_ICON_GHOST, "Ghost", "手动运行 ", nullptr, nullptr, true},
};

const CompanionTool* Find(int CompanionTool::*field, int value) {
  const auto* tool = std::ranges::find(kTools, value, field);
  return tool == std::end(kTools) ? nullptr : tool;
}

}  // namespace

std::span<const CompanionTool> CompanionTools() { return kTools; }

const CompanionTool* ToolOfCommand(int commandId) {
  return Find(&CompanionTool::commandId, commandId);
}

const CompanionTool* ToolOfKey(int keyCode) { return Find(&CompanionTool::keyCode, keyCode); }

std::string FindTool(Ground& ground, const CompanionTool& tool) {
  const ProgramPaths& paths = ground.paths;
  std::string candidates[2];
  if (tool.besideProgram) candidates[0] = paths.appParentDir + tool.besideProgram;
  if (tool.insideProgram) candidates[1] = paths.appDir + tool.insideProgram;
  if (tool.commandId == kMenuGhost) candidates[1] = ToolPath(paths, Tool::kGhost);
  for (const std::string& path : candidates) {
    if (!path.empty() && ground.platform.files.exists(path)) return path;
  }
  return {};
}

bool StartTool(Ground& ground, const CompanionTool& tool) {
  const std::string path = FindTool(ground, tool);
  if (path.empty()) return false;
  ShellNoWait(ground, ShortPath(ground, path), ShowMode::kNormal);
  return true;
}

}  // namespace pavoline
