#include "win32/win_files.h"

#include <windows.h>
// After windows.h, on which it leans.
#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <exception>

#include "platform/paths.h"
#include "win32/handle.h"
#include "win32/system_library.h"
#include "win32/wide_text.h"

namespace pavoline {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::uint64_t Join(DWORD high, DWORD low) { return (std::uint64_t{high} << 32) | low; }

bool WriteAll(HANDLE file, const std::string& bytes) {
  constexpr std::size_t kPiece = 1u << 26;  // network drives refuse larger ones
  for (std::size_t done = 0; done < bytes.size();) {
    const DWORD wanted = static_cast<DWORD>(std::min(bytes.size() - done, kPiece));
    DWORD written = 0;
    if (!WriteFile(file, bytes.data() + done, wanted, &written, nullptr) || written != wanted) {
      return false;
    }
    done += written;
  }
  return true;
}

std::string MinuteText(const FILETIME& time) {
  FILETIME local{};
  SYSTEMTIME parts{};
  FileTimeToLocalFileTime(&time, &local);
  FileTimeToSystemTime(&local, &parts);
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", parts.wYear, parts.wMonth,
                parts.wDay, parts.wHour, parts.wMinute);
  return text;
}

Handle OpenToRead(const std::string& path) {
  return Handle(CreateFileW(WidePath(path).c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                            FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
}

// Reads into the bytes behind those filled; the number read, 0 at the end.
std::optional<DWORD> ReadSome(HANDLE file, std::string& bytes, std::size_t filled) {
  const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - filled, 1u << 26));
  DWORD got = 0;
  if (!ReadFile(file, bytes.data() + filled, wanted, &got, nullptr)) return std::nullopt;
  return got;
}

struct Copying {
  const CopyProgress& progress;
  std::exception_ptr fault;  // kept, as it must not cross the system's frames
};

DWORD CALLBACK OnCopyProgress(LARGE_INTEGER total, LARGE_INTEGER done, LARGE_INTEGER, LARGE_INTEGER,
                              DWORD, DWORD, HANDLE, HANDLE, void* data) {
  auto& copying = *static_cast<Copying*>(data);
  try {
    return copying.progress(static_cast<std::uint64_t>(done.QuadPart),
                            static_cast<std::uint64_t>(total.QuadPart))
               ? PROGRESS_CONTINUE
               : PROGRESS_CANCEL;
  } catch (...) {
    copying.fault = std::current_exception();
    return PROGRESS_CANCEL;
  }
}

}  // namespace

bool WinFiles::exists(const std::string& path) {
  return GetFileAttributesW(WidePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool WinFiles::isFolder(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(WidePath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool WinFiles::accessible(const std::string& folder) {
  if (!isFolder(folder)) return false;
  WIN32_FIND_DATAW found{};
  const FindHandle search(FindFirstFileW(WidePath(WithBackslash(folder) + "*").c_str(), &found));
  // The root of an empty volume has no entries at all.
  return search || GetLastError() == ERROR_FILE_NOT_FOUND;
}

std::string WinFiles::fullPath(const std::string& path) {
  const std::wstring wide = Wide(path);
  const DWORD wanted = GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr);
  std::wstring result(wanted, L'\0');
  result.resize(wanted == 0 ? 0 : GetFullPathNameW(wide.c_str(), wanted, result.data(), nullptr));
  return Narrow(result);
}

std::optional<std::string> WinFiles::read(const std::string& path) {
  const Handle file = OpenToRead(path);
  if (!file) return std::nullopt;
  LARGE_INTEGER size{};
  GetFileSizeEx(file.get(), &size);
  std::string bytes;
  // The file may grow while it is read: what counts is where it ends, not its size before.
  for (std::uint64_t filled = 0, told = static_cast<std::uint64_t>(size.QuadPart);;) {
    if (std::max(filled, told) > kLargestRead) return std::nullopt;
    bytes.resize(std::max(filled, told) + 4096);
    const std::optional<DWORD> got = ReadSome(file.get(), bytes, filled);
    if (!got) return std::nullopt;
    filled += *got;
    if (*got > 0) continue;
    bytes.resize(filled);
    return bytes;
  }
}

std::optional<std::string> WinFiles::readPart(const std::string& path, std::uint64_t offset,
                                              std::size_t room) {
  const Handle file = OpenToRead(path);
  LARGE_INTEGER size{}, start{};
  if (!file || !GetFileSizeEx(file.get(), &size)) return std::nullopt;
  if (offset >= static_cast<std::uint64_t>(size.QuadPart)) return std::string();
  start.QuadPart = static_cast<LONGLONG>(offset);
  if (!SetFilePointerEx(file.get(), start, nullptr, FILE_BEGIN)) return std::nullopt;
  std::string bytes(
      std::min<std::uint64_t>(room, static_cast<std::uint64_t>(size.QuadPart) - offset), '\0');
  for (std::size_t filled = 0; filled < bytes.size();) {
    const std::optional<DWORD> got = ReadSome(file.get(), bytes, filled);
    if (!got) return std::nullopt;
    if (*got == 0) bytes.resize(filled);  // it was cut meanwhile
    filled += *got;
  }
  return bytes;
}

bool WinFiles::create(const std::string& path, const std::string& bytes) {
  const std::wstring wide = WidePath(path);
  Handle file(CreateFileW(wide.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  if (WriteAll(file.get(), bytes)) return true;
  file.reset();
  DeleteFileW(wide.c_str());
  return false;
}

bool WinFiles::write(const std::string& path, const std::string& bytes) {
  Handle file(CreateFileW(WidePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                          CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  return file && WriteAll(file.get(), bytes);
}

bool WinFiles::append(const std::string& path, const std::string& bytes) {
  Handle file(CreateFileW(WidePath(path).c_str(), FILE_APPEND_DATA, kShareAll, nullptr, OPEN_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  return file && WriteAll(file.get(), bytes);
}

std::optional<std::uint64_t> WinFiles::size(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(WidePath(path).c_str(), GetFileExInfoStandard, &data) ||
      (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return std::nullopt;
  }
  return Join(data.nFileSizeHigh, data.nFileSizeLow);
}

bool WinFiles::remove(const std::string& path) { return DeleteFileW(WidePath(path).c_str()) != 0; }

bool WinFiles::rename(const std::string& from, const std::string& to) {
  return MoveFileExW(WidePath(from).c_str(), WidePath(to).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

bool WinFiles::createFolder(const std::string& path) {
  return CreateDirectoryW(WidePath(path).c_str(), nullptr) != 0;
}

bool WinFiles::copy(const std::string& from, const std::string& to) {
  return CopyFileW(WidePath(from).c_str(), WidePath(to).c_str(), FALSE) != 0;
}

bool WinFiles::copyWithProgress(const std::string& from, const std::string& to,
                                const CopyProgress& progress) {
  Copying copying{progress, nullptr};
  const BOOL copied = CopyFileExW(WidePath(from).c_str(), WidePath(to).c_str(), OnCopyProgress,
                                  &copying, nullptr, 0);
  if (copying.fault) std::rethrow_exception(copying.fault);
  return copied != 0;
}

void WinFiles::list(const std::string& pattern, const EntryVisitor& visit) {
  WIN32_FIND_DATAW found{};
  // Without short names, which nobody asked for and which cost time.
  FindHandle search(FindFirstFileExW(WidePath(pattern).c_str(), FindExInfoBasic, &found,
                                     FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
  if (!search) return;
  do {
    FileEntry entry;
    entry.name = Narrow(found.cFileName);
    entry.attributes = found.dwFileAttributes;
    entry.size = Join(found.nFileSizeHigh, found.nFileSizeLow);
    entry.modified = MinuteText(found.ftLastWriteTime);
    if (!visit(entry)) return;
  } while (FindNextFileW(search.get(), &found));
}

std::string WinFiles::shortPath(const std::string& path) {
  const std::wstring wide = WidePath(path);
  const DWORD wanted = GetShortPathNameW(wide.c_str(), nullptr, 0);
  std::wstring result(wanted, L'\0');
  result.resize(wanted == 0 ? 0 : GetShortPathNameW(wide.c_str(), result.data(), wanted));
  // Command lines cannot use the form of long paths, and a short one does not need it.
  if (result.starts_with(L"\\\\?\\") && result.find(L':') == 5) result.erase(0, 4);
  return Narrow(result);
}

std::string WinFiles::fileVersion(const std::string& path) {
  using InfoSize = DWORD WINAPI(LPCWSTR, DWORD*);
  using Info = BOOL WINAPI(LPCWSTR, DWORD, DWORD, void*);
  using Query = BOOL WINAPI(const void*, LPCWSTR, void**, UINT*);
  static const auto infoSize = SystemFunction<InfoSize>(L"version.dll", "GetFileVersionInfoSizeW");
  static const auto info = SystemFunction<Info>(L"version.dll", "GetFileVersionInfoW");
  static const auto query = SystemFunction<Query>(L"version.dll", "VerQueryValueW");
  if (infoSize == nullptr || info == nullptr || query == nullptr) return {};

  const std::wstring wide = WidePath(path);
  DWORD ignored = 0;
  std::string block(infoSize(wide.c_str(), &ignored), '\0');
  void* value = nullptr;
  UINT size = 0;
  if (block.empty() || !info(wide.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
      !query(block.data(), L"\\", &value, &size) || size < sizeof(VS_FIXEDFILEINFO)) {
    return {};
  }
  const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(value);
  char text[48];
  std::snprintf(text, sizeof text, "%d.%d.%d.%d", HIWORD(fixed.dwFileVersionMS),
                LOWORD(fixed.dwFileVersionMS), HIWORD(fixed.dwFileVersionLS),
                LOWORD(fixed.dwFileVersionLS));
  return text;
}

bool WinFiles::setCurrentFolder(const std::string& path) {
  return SetCurrentDirectoryW(Wide(path).c_str()) != 0;
}

bool WinFiles::deleteTreeQuietly(const std::string& path) {
  std::wstring names = Wide(path);
  names.push_back(L'\0');  // the list of names ends with an empty one
  SHFILEOPSTRUCTW operation{};
  operation.wFunc = FO_DELETE;
  operation.pFrom = names.c_str();
  operation.fFlags = FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI;
  return SHFileOperationW(&operation) == 0;
}

}  // namespace pavoline
