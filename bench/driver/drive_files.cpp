#include "driver/drive_files.h"

#include <windows.h>

#include "bridge/unix_side.h"

namespace bench {
namespace {

std::string propPath(const std::string& prop) { return runFolder() + "/props/" + prop; }

std::string profile(const std::string& file, const wchar_t* section, const std::string& key) {
  const std::wstring path = fromUtf8(file);
  wchar_t value[1024] = {};
  // Cached contents would hide what the program has written since.
  WritePrivateProfileStringW(nullptr, nullptr, nullptr, path.c_str());
  GetPrivateProfileStringW(section, fromUtf8(key).c_str(), L"", value, 1024, path.c_str());
  return toUtf8(value);
}

std::string fromLanguageFile(const wchar_t* section, const char* key, int number) {
  return profile(std::string(kAppFolder) + "\\Lang\\1033.lng", section,
                 key + ("(" + std::to_string(number) + ")"));
}

}  // namespace

std::string runFolder() { return toUtf8(environment(L"PAVOLINE_BENCH")); }

bool write(const std::string& path, const std::string& bytes) {
  makeFolder(path.substr(0, path.find_last_of('\\')));
  FILE* file = _wfopen(fromUtf8(path).c_str(), L"wb");
  if (!file) return false;
  const size_t written = fwrite(bytes.data(), 1, bytes.size(), file);
  return fclose(file) == 0 && written == bytes.size();
}

std::string read(const std::string& path) {
  FILE* file = _wfopen(fromUtf8(path).c_str(), L"rb");
  if (!file) return {};
  std::string bytes;
  char part[4096];
  while (const size_t count = fread(part, 1, sizeof part, file)) bytes.append(part, count);
  fclose(file);
  return bytes;
}

bool exists(const std::string& path) {
  return GetFileAttributesW(fromUtf8(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

void makeFolder(const std::string& path) {
  for (size_t end = path.find('\\', 3); end != std::string::npos; end = path.find('\\', end + 1)) {
    CreateDirectoryW(fromUtf8(path.substr(0, end)).c_str(), nullptr);
  }
  CreateDirectoryW(fromUtf8(path).c_str(), nullptr);
}

bool place(const std::string& prop, const std::string& path) {
  makeFolder(path.substr(0, path.find_last_of('\\')));
  return runUnix({"cp", "--sparse=always", propPath(prop), unixPath(fromUtf8(path))}) == 0;
}

bool holdsSystem(int edition, char drive) {
  return runUnix({"diff", "-rq", "--exclude=Panther", "--exclude=DriverStore",
                  propPath("edition-" + std::to_string(edition)),
                  runFolder() + "/volumes/" + static_cast<char>(tolower(drive))}) == 0;
}

void writeSettings(const std::string& lines) {
  write(std::string(kAppFolder) + "\\Pavoline.ini", "[Option]\r\n" + lines + "\r\n");
}

std::string setting(const std::string& key) {
  return profile(std::string(kAppFolder) + "\\Pavoline.ini", L"Option", key);
}

std::string text(int number) { return fromLanguageFile(L"Language", "String", number); }
std::string more(int number) { return fromLanguageFile(L"More", "More", number); }

std::string filled(std::string text, const std::string& placeholder, const std::string& value) {
  const size_t at = text.find(placeholder);
  return at == std::string::npos ? "no " + placeholder
                                 : text.replace(at, placeholder.size(), value);
}

}  // namespace bench
