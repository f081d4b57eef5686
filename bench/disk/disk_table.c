#include "disk_table.h"

enum { kLargestTable = 64 * 1024 };

BOOLEAN Same(const char* a, const char* b) {
  while (*a && *a == *b) ++a, ++b;
  return *a == *b;
}

BOOLEAN Holds(const char* text, const char* part) {
  for (; *text; ++text) {
    ULONG length = 0;
    while (part[length] && text[length] == part[length]) ++length;
    if (!part[length]) return TRUE;
  }
  return FALSE;
}

ULONGLONG Number(const char* text, const char** end) {
  ULONGLONG number = 0;
  for (; *text >= '0' && *text <= '9'; ++text) number = number * 10 + (ULONGLONG)(*text - '0');
  if (end) *end = text;
  return number;
}

ULONG Wide(const char* utf8, WCHAR* wide, ULONG room) {
  ULONG length = 0, size = 0;
  while (utf8[length]) ++length;
  RtlUTF8ToUnicodeN(wide, room, &size, utf8, length);
  return size;
}

NTSTATUS OpenFile(const char* name, HANDLE* file) {
  UNICODE_STRING object;
  OBJECT_ATTRIBUTES attributes;
  IO_STATUS_BLOCK io;
  WCHAR path[1024] = L"\\??\\";
  const ULONG prefix = 4 * sizeof(WCHAR);
  object.Buffer = path;
  object.Length = (USHORT)(prefix + Wide(name, path + 4, sizeof path - prefix));
  object.MaximumLength = object.Length;
  for (USHORT i = 0; i < object.Length / sizeof(WCHAR); ++i) {
    if (path[i] == '/') path[i] = '\\';
  }
  InitializeObjectAttributes(&attributes, &object, OBJ_CASE_INSENSITIVE, NULL, NULL);
  return ZwCreateFile(file, GENERIC_READ | SYNCHRONIZE, &attributes, &io, NULL, 0,
                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, FILE_OPEN,
                      FILE_SYNCHRONOUS_IO_NONALERT | FILE_NON_DIRECTORY_FILE, NULL, 0);
}

NTSTATUS ReadAt(HANDLE file, ULONGLONG offset, void* data, ULONG size) {
  IO_STATUS_BLOCK io;
  LARGE_INTEGER from;
  from.QuadPart = (LONGLONG)offset;
  const NTSTATUS status = ZwReadFile(file, NULL, NULL, NULL, &io, data, size, &from, NULL);
  if (status) return status;
  return io.Information == size ? STATUS_SUCCESS : STATUS_END_OF_FILE;
}

BOOLEAN OpenTable(struct Table* table) {
  HANDLE file;
  if (OpenFile(TABLE_FILE, &file)) return FALSE;
  table->text = ExAllocatePool(NonPagedPool, kLargestTable);
  if (table->text) {
    RtlZeroMemory(table->text, kLargestTable);
    ReadAt(file, 0, table->text, kLargestTable - 1);
    table->at = table->text;
  }
  ZwClose(file);
  return table->text != NULL;
}

void CloseTable(struct Table* table) { ExFreePool(table->text); }

BOOLEAN NextRow(struct Table* table, struct Row* row) {
  static char none[] = "";
  if (!*table->at) return FALSE;
  for (int i = 0; i < kFields; ++i) row->field[i] = none;
  for (int i = 0;; ++i) {
    if (i < kFields) row->field[i] = table->at;
    while (*table->at && *table->at != '\t' && *table->at != '\n') ++table->at;
    const char end = *table->at;
    if (end) *table->at++ = 0;
    if (end != '\t') return TRUE;
  }
}

BOOLEAN FindRow(struct Table* table, const char* kind, const char* name, struct Row* row) {
  while (NextRow(table, row)) {
    if (Same(row->field[kKind], kind) && Same(row->field[kName], name)) return TRUE;
  }
  return FALSE;
}
