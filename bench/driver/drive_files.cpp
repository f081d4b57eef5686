#include "driver/drive_files.h"

#include <windows.h>

#include "bridge/unix_side.h"

namespace bench {
namespace {

std::string PropPath(const std::string& prop) { return RunFolder() + "/props/" + prop; }

std::string Profile(const std::string& file, const wchar_t* section, const std::string& key) {
  const std::wstring path = FromUtf8(file);
  wchar_t value[1024] = {};
  // Cached contents would hide what the program has written since.
  WritePrivateProfileStringW(nullptr, nullptr, nullptr, path.c_str());
  GetPrivateProfileStringW(section, FromUtf8(key).c_str(), L"", value, 1024, path.c_str());
  return ToUtf8(value);
}

std::string FromLanguageFile(const wchar_t* section, const char* key, int number) {
  return Profile(std::string(kAppFolder) + "\\Lang\\1033.lng", section,
                 key + ("(" + std::to_string(number) + ")"));
}

}  // namespace

std::string RunFolder() { return ToUtf8(Environment(L"PAVOLINE_BENCH")); }

bool Write(const std::string& path, const std::string& bytes) {
  MakeFolder(path.substr(0, path.find_last_of('\\')));
  FILE* file = _wfopen(FromUtf8(path).c_str(), L"wb");
  if (!file) return false;
  const size_t written = fwrite(bytes.data(), 1, bytes.size(), file);
  return fclose(file) == 0 && written == bytes.size();
}

std::string Read(const std::string& path) {
  FILE* file = _wfopen(FromUtf8(path).c_str(), L"rb");
  if (!file) return {};
  std::string bytes;
  char part[4096];
  while (const size_t count = fread(part, 1, sizeof part, file)) bytes.append(part, count);
  fclose(file);
  return bytes;
}

bool Exists(const std::string& path) {
  return GetFileAttributesW(FromUtf8(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void MakeFolder(const std::string& path) {
  for (size_t end = path.find('\\', 3); end != std::string::npos; end = path.find('\\', end + 1)) {
    CreateDirectoryW(FromUtf8(path.substr(0, end)).c_str(), nullptr);
  }
  CreateDirectoryW(FromUtf8(path).c_str(), nullptr);
}

bool Place(const std::string& prop, const std::string& path) {
  MakeFolder(path.substr(0, path.find_last_of('\\')));
  return RunUnix({"cp", "--sparse=always", PropPath(prop), UnixPath(FromUtf8(path))}) == 0;
}

bool HoldsSystem(int edition, char drive) {
  return RunUnix({"diff", "-rq", "--exclude=Panther", "--exclude=DriverStore",
                  PropPath("edition-" + std::to_string(edition)),
                  RunFolder() + "/volumes/" + static_cast<char>(tolower(drive))}) == 0;
}

void WriteSettings(const std::string& lines) {
  Write(std::string(kAppFolder) + "\\Pavoline.ini", "[Option]\r\n" + lines + "\r\n");
}

std::string Setting(const std::string& key) {
  return Profile(std::string(kAppFolder) + "\\Pavoline.ini", L"Option", key);
}

std::string Text(int number) { return FromLanguageFile(L"Language", "String", number); }
std::string More(int number) { return FromLanguageFile(L"More", "More", number); }

std::string Filled(std::string text, const std::string& placeholder, const std::string& value) {
  const size_t at = text.find(placeholder);
  return at == std::string::npos ? "no " + placeholder
                                 : text.replace(at, placeholder.size(), value);
}

}  // namespace bench
