#pragma once

#include <string>

#include "form/texts.h"
#include "platform/dialogs.h"
#include "platform/platform.h"
#include "session/options.h"
#include "session/program_paths.h"

// What everything stands on from the start of the program to its end: the machine, the program's
// own files, the language, the command line, the journal. A function that needs no more takes this.
namespace pavoline {

struct GroundFacts {
  Texts texts;
  ProgramPaths paths;
  CommandLineOptions commandLine;
  unsigned language = 0;  // locale identifier of the texts, and of the thread
  float osVersion = 0;    // major.minor of the running system; 0 when unknown
};

struct Ground : GroundFacts {
  explicit Ground(Platform& platformOfRun) : platform(platformOfRun) {}
  Platform& platform;
};

// String(n) of the language in use.
const std::string& String(const Ground& ground, int n);
// More(n), a text beyond the numbered table.
const std::string& More(const Ground& ground, int n);

// "%windir%\temp\" + name, computed afresh.
std::string TempFile(Ground& ground, const std::string& name);

// Seconds that a message of an unattended run waits for somebody to read it.
inline constexpr int kUnattendedSeconds = 60;
inline constexpr int kSilentSeconds = 10;

// Shows a message and notes it in the journal with its answer. In an unattended run it closes by
// itself after a minute (ten seconds in a silent one); the answer is then the one that changes
// nothing, Cancel where there is a choice.
Answer Message(Ground& ground, const std::string& text, MessageKind kind, const std::string& title);
// The same with a limit of its own, which also holds for a person.
Answer Message(Ground& ground, const std::string& text, MessageKind kind, const std::string& title,
               const MessageLimit& limit);
// With a further button, and the usual limit.
Answer Message(Ground& ground, const std::string& text, MessageKind kind, const std::string& title,
               const MessageButton& further);

// Adds a line with the time to %windir%\temp\Pavoline.log, so that a person can find out
// afterwards what was done; where that folder is full or read-only, to a file of the same name
// beside the program. A failure is ignored: no installation stops for its journal.
void Journal(Ground& ground, const std::string& text);

}  // namespace pavoline
