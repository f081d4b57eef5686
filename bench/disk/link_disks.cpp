// Makes the names of disks and the letters of volumes follow the bench's table of disks:
//   link-disks [LETTER FOLDER]...   after the mount manager was told of folders it does not know
//   yet
// Exit code 1 when the driver does not answer.

#include <windows.h>

#include <cstdio>

#include "bridge/unix_side.h"

int wmain(int count, wchar_t** arguments) {
  for (int i = 1; i + 1 < count; i += 2) {
    if (!bench::DefineDrive(arguments[i][0], "hd", bench::ToUtf8(arguments[i + 1]))) return 2;
  }
  const HANDLE disks = CreateFileW(L"\\\\.\\BenchDisks", 0, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   nullptr, OPEN_EXISTING, 0, nullptr);
  if (disks == INVALID_HANDLE_VALUE) {
    fprintf(stderr, "link-disks: the driver benchdisk.sys does not answer (error %lu)\n",
            GetLastError());
    return 1;
  }
  CloseHandle(disks);
  return 0;
}
