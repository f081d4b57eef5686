#pragma once

#include <string>

// Files of the bench's drives by their Windows paths, and the application's settings and texts.
namespace bench {

inline constexpr char kAppFolder[] = "C:\\Program Files\\Pavoline";

// The run's folder, as a Unix path.
std::string runFolder();

bool write(const std::string& path, const std::string& bytes);  // with the folders above it
std::string read(const std::string& path);                      // empty when there is no such file
bool exists(const std::string& path);
void makeFolder(const std::string& path);  // with the folders above it

// Files made by bench/lib/props.sh: small.wim and large.wim (two editions), small.gho, install.iso,
// without-image.iso; copied to a path of the drives.
bool place(const std::string& prop, const std::string& path);
// True when the drive holds every file of the edition (1 or 2), byte for byte, and besides only
// what an installation adds.
bool holdsSystem(int edition, char drive);

void writeSettings(const std::string& lines);
std::string setting(const std::string& key);

// A text of the shipped language file, by its number, and one of its third table.
std::string text(int number);
std::string more(int number);
std::string filled(std::string text, const std::string& placeholder, const std::string& value);

}  // namespace bench
