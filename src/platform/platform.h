#pragma once

namespace pavoline {

class Processes;
class Files;
class Drives;
class Profile;
class Environment;
class TextServices;
class ForeignWindows;
class Taskbar;
class Dialogs;

// Everything the program asks of the operating system, by subject. Decisions are made above it;
// what implements it decides nothing.
struct Platform {
  Processes& processes;
  Files& files;
  Drives& drives;
  Profile& profile;
  Environment& environment;
  TextServices& text;
  ForeignWindows& windows;
  Taskbar& taskbar;
  Dialogs& dialogs;
};

}  // namespace pavoline
