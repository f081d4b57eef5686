#pragma once

#include <string>

// What a person asked of this run: by the settings file and by the command line.
namespace pavoline {

// Settings that are not controls of the main window. Defaults hold when a key is missing or empty.
struct InstallOptions {
  std::string pcUser;
  std::string computerName;
  std::string workGroup;
  std::string defaultSysEdition;      // comma-separated words, the first that matches wins
  bool usbPartition = false;          // offer partitions of removable drives
  int searchType = 0;                 // 1: level search; else folder-name search
  int searchLevel = 2;                // levels below a drive root, 0 to 3
  std::string searchDir;              // comma-separated folder names
  std::string pluginDir = "Plug-in";  // below the program's folder and drive roots
  std::string logDir;                 // takes a copy of the record; empty: none
};

// The parsed command line. "AUTO" as a partition takes whatever the lists preselected.
struct CommandLineOptions {
  std::string sourcePath;  // in lower case
  int wimIndex = 0;        // from 1; 0: none asked for
  bool bootRepair = false;
  bool reboot = false;
  bool install = false;
  std::string installPartition;  // "D:" or "AUTO"
  std::string bootPartition;
  bool formatInstallPartition = false;
  bool silent = false;
  bool dryRun = false;  // everything is checked and told, nothing is begun

  // In place of a setting; empty: not given.
  std::string settingsFile, computerName, driverFolder, answerFile, logDir;
};

}  // namespace pavoline
