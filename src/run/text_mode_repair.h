#pragma once

#include <string>

namespace pavoline {

// Mends a UTF-16LE file that was written through a text-mode stream. Such a stream puts the byte
// 0x0D before every byte 0x0A, also before one that is half of a character (U+4E0A), and so shifts
// all that follows by a byte. Bytes in, bytes out, byte-order mark and any cut-off end included. A
// file that was written as it is comes back as it is.
std::string RepairTextMode(std::string bytes);

}  // namespace pavoline
