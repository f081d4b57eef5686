#pragma once

#include <string>

#include "session/ground.h"

// Paths as words of command lines.
namespace pavoline {

// The path's 8.3 form in double quotes; two quotes alone for a path that does not exist.
std::string ShortPath(Ground& ground, const std::string& path);

// The same for a line of a batch file, where the interpreter reads "%" as the start of a variable.
std::string BatchPath(Ground& ground, const std::string& path);

// A tool of the program's own as such a word. The quotes close behind the program's folder and the
// path goes on; the interpreter joins them.
std::string BatchTool(Ground& ground, Tool tool);

// A path as one word of a direct command line: in double quotes where it holds a blank or a
// character that the command interpreter would read, bare otherwise.
std::string CommandWord(const std::string& path);

// A path that a line for the interpreter holds without quotes: the characters that would end the
// command or name a variable are escaped.
std::string EscapedForInterpreter(const std::string& path);

}  // namespace pavoline
