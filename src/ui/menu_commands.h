#pragma once

// Identifiers of what the program adds to the main window's system menu. The menu's own commands
// keep the range 2000 to 2026; 2001, 2007 to 2009 and 2014 to 2019 are free and go to the system.
namespace pavoline {

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
  kMenuFirstApplyMode = 2020,
  kMenuLastApplyMode = 2026,
  kMenuComputerName = 2040,  // outside the range, which others may rely on
};

}  // namespace pavoline
