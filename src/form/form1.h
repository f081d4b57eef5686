#pragma once

#include "form/form.h"
#include "form/text_numbers.h"

namespace pavoline {

// Places in the main window's control arrays, by role.
enum TextIndex { kBootPartition = 0, kInstallPartition = 1, kAnswerFile = 2, kDriverFolder = 3 };
enum CheckIndex {
  kRepairBoot = 0,
  kRestart = 1,
  kDoNotFormat = 2,
  kUseAnswerFile = 3,
  kAddDrivers = 4,
  kRunPlugin = 5,
};
enum CommandIndex {
  kBrowseImage = 0,
  kChooseBoot = 1,
  kChooseInstall = 2,
  kBrowseAnswerFile = 3,
  kBrowseDrivers = 4,
  kBrowsePlugin = 5,
  kStart = 6,
};
enum ComboIndex { kEditions = 0, kEditionDetails = 1 };
enum FrameIndex { kOptionsFrame = 0, kDetailsFrame = 1 };
enum OptionRowIndex { kAnswerFileRow, kDriversRow, kPluginRow };

// Widths of the window in twips: all options shown, and the option frames hidden.
inline constexpr int kWideWidth = 13680;
inline constexpr int kNarrowWidth = 7900;

// Intervals of the timers, milliseconds.
inline constexpr int kApplyMonitorInterval = 1500;   // Timer1
inline constexpr int kStartupInterval = 10;          // Timer2
inline constexpr int kGhostWaitInterval = 1000;      // Timer2
inline constexpr int kGhostFollowInterval = 500;     // Timer2
inline constexpr int kDriverMonitorInterval = 1000;  // Timer3
inline constexpr int kAutoStartInterval = 1000;      // Timer4
inline constexpr int kOverallInterval = 1000;

// An optional step of an installation: a box that asks for it, a field that says what with, and a
// button that fills the field. Field and button wait for the box to be ticked.
struct OptionRow {
  CheckBox& box;
  Field& field;
  Button& browse;
  CaptionNumber caption;
  bool browsesWhenEmpty;  // ticking the box with nothing in the field presses the button

  void setOpen(bool open) const;
  void setVisible(bool visible) const;
  // What the step is wanted with; empty when it is not wanted.
  std::string wanted() const { return box.ticked() ? field.text() : std::string(); }
};

// What the window keeps besides what it shows.
struct Marks {
  // How far the start has come: 1 with the partitions listed, 2 with the plug-ins found.
  int startupStage = 0;

  // The value of the box against formatting, for as long as a Ghost image takes the choice away.
  std::string formatChoice;

  // Two letters drawn for the installation that was started last. Nothing reads them so far: they
  // are for whoever has to tell one start from another.
  std::string installation;
};

// The main window.
class Form1 : public Form {
 public:
  Form1();

  Label label[4];         // image, edition, boot partition, install partition
  ComboBox combo1{true};  // image source path
  Button search;          // starts and stops the image search
  Button menu;            // opens the entries of the system menu
  ComboBox combo[2];      // editions; their details (never shown, kept in step with the first)
  TextBox text[4];
  Label facts[2];         // what is known of the two chosen partitions, by TextIndex
  ComboBox combo2{true};  // plug-in program
  CheckBox check[6];
  Button command1[7];
  Button stop;  // shown while an installation runs
  Label status;
  Label details;  // in the details frame: what is known of the chosen edition
  Frame frame[2];
  ProgressBar progressBar1;
  Label overall;  // below the bar: how far the whole installation is
  Timer timer1, timer2, timer3, timer4;
  Timer overallTimer;

  Marks marks;

  // By OptionRowIndex, from top to bottom.
  const OptionRow optionRows[3];
};

}  // namespace pavoline
