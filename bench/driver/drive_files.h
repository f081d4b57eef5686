#pragma once

#include <string>

// Files of the bench's drives by their Windows paths, and the application's settings and texts.
namespace bench {

inline constexpr char kAppFolder[] = "C:\\Program Files\\Pavoline";

// The run's folder, as a Unix path.
std::string RunFolder();

bool Write(const std::string& path, const std::string& bytes);  // with the folders above it
std::string Read(const std::string& path);                      // empty when there is no such file
bool Exists(const std::string& path);
void MakeFolder(const std::string& path);  // with the folders above it

// Files made by bench/lib/props.sh: small.wim and large.wim (two editions), small.gho, install.iso,
// without-image.iso; copied to a path of the drives.
bool Place(const std::string& prop, const std::string& path);
// True when the drive holds every file of the edition (1 or 2), byte for byte, and besides only
// what an installation adds.
bool HoldsSystem(int edition, char drive);

void WriteSettings(const std::string& lines);
std::string Setting(const std::string& key);

// A text of the shipped language file, by its number, and one of its third table.
std::string Text(int number);
std::string More(int number);
std::string Filled(std::string text, const std::string& placeholder, const std::string& value);

}  // namespace bench
