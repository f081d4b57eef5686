#pragma once

namespace pavoline {

// What the program is doing. It does one thing at a time; work begun inside other work (a source
// read while the partitions are listed) is the activity until it has ended.
enum class Activity {
  kStarting,       // until the window is ready; in an unattended run until it presses Start
  kIdle,           // waits for the person
  kListing,        // the partitions are being listed again
  kReadingSource,  // a tool looks into the chosen image
  kChecking,       // Start's checks and questions
  kInstalling,     // from the confirmation to the outcome
  kRepairingBoot,  // the menu's boot repair, its question included
  kPreparingDisk,  // the menu's empty disk, its window and question included
  kVirtualDisk,    // the window that makes and moves virtual disks is open
  kClosed,         // the window is gone; nothing more is done
};

// What a person, or a timer on a person's behalf, may want to do.
enum class Action {
  kStart,         // an installation
  kTakeSource,    // browse, drop, mount, or pick an image
  kSetOptions,    // apply mode, names, save settings
  kChoose,        // a partition from its list
  kSearch,        // the drives for images
  kVirtualDisks,  // open their window
  kRepairBoot,
  kPrepareDisk,  // an empty one, for an installation
  kStartTool,    // a companion program
  kUseKeys,      // the main window's hot keys
  kLook,         // help, about, language file: what changes nothing
};

bool MayDo(Activity activity, Action action);

// Whether the program itself writes to disks then; an installation has its own dry run.
bool ChangesDisks(Action action);

// What closing the window means.
enum class Closing {
  kFree,  // nothing is lost
  kAsk,   // work would be cut off: a person is asked first
  kWait,  // not now
};
Closing ClosingDuring(Activity activity);

}  // namespace pavoline
