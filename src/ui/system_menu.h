#pragma once

#include "session/session.h"

// What the program adds to the main window's system menu, above the standard items.
namespace pavoline {

// 2000 to 2026 are the menu's own; those of them without an item here go to the system.
enum MenuCommand {
  kMenuSaveSettings = 2000,
  kMenuVirtualDisk = 2002,
  kMenuHelp = 2003,
  kMenuAbout = 2004,
  kMenuLanguageFile = 2005,
  kMenuSeparator = 2006,
  kMenuBackup = 2010,
  kMenuBootRepair = 2011,
  kMenuGhost = 2012,
  kMenuPartitions = 2013,
  kMenuFirstApplyMode = 2020,  // the seven modes follow each other
  // Outside that range, in which every number has its fixed meaning.
  kMenuComputerName = 2040,
  kMenuPrepareDisk = 2041,
};

// Adds the program's entries to the main window's system menu, and keeps them grey while what they
// do cannot be done.
void BuildSystemMenu(Session& session);

// The same entries below the main window's menu button; runs the one that is chosen.
void OpenMenu(Session& session);

// Runs a system-menu command; false for identifiers that are not the program's.
bool HandleSystemCommand(Session& session, int id);

}  // namespace pavoline
