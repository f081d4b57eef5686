#pragma once

#include <string>
#include <vector>

// What a Windows program of the bench may ask of the machine below Wine. Only Wine's ntdll and
// kernel32 answer; on a real Windows every call fails.
namespace bench {

std::string ToUtf8(const std::wstring& text);
std::wstring FromUtf8(const std::string& text);

// The Unix path behind a Windows path, 8.3 parts included; empty when a folder on the way is
// missing.
std::string UnixPath(const std::wstring& windowsPath);

// A Unix path in the form that Wine's file functions open without any drive letter.
std::wstring WindowsForm(const std::string& unixPath);

// Runs a Unix program with inherited standard streams and waits; its exit code, 255 when it was
// killed, -1 when Wine cannot run it.
int RunUnix(const std::vector<std::string>& arguments);

// Gives a folder a drive letter ("hd", "cdrom", "removable" or "network"), or takes the letter away
// ("none").
bool DefineDrive(wchar_t letter, const std::string& kind, const std::string& folder);

// Value of an environment variable, empty when it is not set.
std::wstring Environment(const wchar_t* name);

// Adds one line to the bench's journal, in one write.
void Journal(const std::string& tool, const std::string& arguments, const std::string& result,
             const std::string& note);

// The command line behind the program's own name, as the caller wrote it.
std::wstring RawArguments();

}  // namespace bench
