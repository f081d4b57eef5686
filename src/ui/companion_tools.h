#pragma once

#include <span>
#include <string>

#include "session/ground.h"

// Programs of their own that are started from here when they lie beside this one.
namespace pavoline {

struct CompanionTool {
  int commandId;  // in the system menu
  int keyCode;    // with Ctrl in the main window
  int image;      // resource number of its menu picture
  const char* name;
  const char* chineseName;    // the menu's name for it in simplified Chinese
  const char* besideProgram;  // path below the folder that holds the program's folder
  const char* insideProgram;  // path below the program's folder
  bool closesProgram;         // started by key, it takes the program's place
};

// In the order of the tools menu.
std::span<const CompanionTool> CompanionTools();

// Null for a command or key (pressed with Ctrl) that belongs to no tool.
const CompanionTool* ToolOfCommand(int commandId);
const CompanionTool* ToolOfKey(int keyCode);

// Where the tool lies; empty when it is not there.
std::string FindTool(Ground& ground, const CompanionTool& tool);

// Starts the tool in a normal window without waiting. False when it is not there.
bool StartTool(Ground& ground, const CompanionTool& tool);

}  // namespace pavoline
