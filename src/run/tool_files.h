#pragma once

#include <string>

#include "session/ground.h"

// Files that tools leave or take.
namespace pavoline {

// Text of a UTF-16LE file without its first two bytes, the byte-order mark. Empty when missing or
// shorter. The imaging program writes such files through a text-mode stream that puts 0x0D before
// each 0x0A byte; that is mended first.
std::string ReadUnicodeFile(Ground& ground, const std::string& path);

// The bytes of a UTF-8 file, byte-order mark included; empty when missing.
std::string ReadUtf8File(Ground& ground, const std::string& path);

// Writes text as UTF-8, with the byte-order mark in front if asked for. Empty text writes nothing.
// False when the file could not be written whole.
bool WriteUtf8File(Ground& ground, const std::string& text, const std::string& path, bool withBom);

// The last bytes of a file that may be of any size; empty when it cannot be read.
std::string ReadEnd(Ground& ground, const std::string& path, std::size_t room);

// The last lines of what a tool has said, in one text of a few hundred characters.
std::string LastWords(Ground& ground, const std::string& path);

}  // namespace pavoline
