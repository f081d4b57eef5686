#pragma once

#include <string>

#include "platform/processes.h"
#include "session/session.h"

// The one place that turns a command text into a script under %windir%\temp, starts it and waits
// for it while the window stays alive. No operation tells whether the program succeeded: callers
// read that from logs, files or drive letters. Exit codes are not consulted.
namespace pavoline {

// Starts a command line and returns when the program has ended, handling events meanwhile; there
// is no time-out. Also returns when the main window has been unloaded: after it, a step checks
// `session.form.unloaded()` and does nothing more.
void ShellAndWait(Session& session, const std::string& commandLine, ShowMode mode);

// The same without waiting.
void ShellNoWait(Session& session, const std::string& commandLine, ShowMode mode);

// Runs a command text of one or more lines as TempDir\base.bat, hidden, and waits. The output of
// its last line lands in TempDir\base.log, which stays for the caller. A script that cannot be
// written, or not in the interpreter's code page, is not run and leaves no log.
void RunBatch(Session& session, const std::string& commandText, const std::string& base);

// Writes one line as TempDir\base.bat and starts it, hidden and without waiting; a redirection is
// part of the line. False when the file could not be written: then nothing was started.
bool StartBatch(Session& session, const std::string& line, const std::string& base);

// Runs a diskpart script from TempDir\base.txt, which stays, in a visible window, and waits.
void RunDiskpart(Session& session, const std::string& scriptText, const std::string& base);

// The path's 8.3 form in double quotes; two quotes alone for a path that does not exist.
std::string ShortPath(Session& session, const std::string& path);

// The same for a line of a batch file, where the interpreter reads "%" as the start of a variable.
std::string BatchPath(Session& session, const std::string& path);

// A path as one word of a direct command line: in double quotes where it holds a blank or a
// character that the command interpreter would read, bare otherwise.
std::string CommandWord(const std::string& path);

// Ends every process of that image name, given in lower case with its extension.
void KillProcessByName(Session& session, const std::string& name);
bool IsProcessRunning(Session& session, const std::string& name);

// Text of a UTF-16LE file without its first two bytes, the byte-order mark. Empty when missing or
// shorter. The imaging program writes such files through a text-mode stream that puts 0x0D before
// each 0x0A byte; that is mended first.
std::string ReadUnicodeFile(Session& session, const std::string& path);

// The bytes of a UTF-8 file, byte-order mark included; empty when missing.
std::string ReadUtf8File(Session& session, const std::string& path);

// Writes text as UTF-8, with the byte-order mark in front if asked for. Empty text writes nothing.
// False when the file could not be written whole.
bool WriteUtf8File(Session& session, const std::string& text, const std::string& path,
                   bool withBom);

// Shell flags for a deletion that neither asks nor shows anything.
inline constexpr unsigned kDeleteQuietly = 0x0414;

// Deletes a file or a folder tree through the shell; true on success.
bool DeleteTree(Session& session, const std::string& path, unsigned flags);

}  // namespace pavoline
