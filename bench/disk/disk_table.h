#pragma once

#include <ntddk.h>

// The text file that says which disks there are and what lies on them, read anew at every question.
// Fields are separated by tabs:
//   disk    NUMBER  IMAGE  MODEL  [TRAITS]         IMAGE "-": a drive without a medium
//   volume  NAME    EXTENTS  LETTERS  FS  SERIAL  LABEL
// EXTENTS is "0/3" for partition 3 of disk 0, "0/0" for the whole disk, "0/3+BYTES" for a volume
// that begins within the partition, and several of them joined by commas; LETTERS and FS are "-"
// for none, SERIAL is decimal. TRAITS may name "removable", "readonly" and "offline". NAME is the
// folder of the run that holds the files.
#define TABLE_FILE "C:/windows/system32/drivers/benchdisk.txt"

enum { kKind, kName, kWhere, kLetters, kFileSystem, kSerial, kLabel, kFields };
enum { kModel = kLetters, kTraits = kFileSystem };

struct Table {
  char* text;  // free it with CloseTable
  char* at;
};

struct Row {
  char* field[kFields];  // "" where a line has fewer
};

BOOLEAN OpenTable(struct Table* table);
BOOLEAN NextRow(struct Table* table, struct Row* row);
void CloseTable(struct Table* table);

// The row of a disk or volume in an open table.
BOOLEAN FindRow(struct Table* table, const char* kind, const char* name, struct Row* row);

// Texts of ASCII digits; the number ends at the first other letter, and end points there.
ULONGLONG Number(const char* text, const char** end);
BOOLEAN Same(const char* a, const char* b);
BOOLEAN Holds(const char* text, const char* part);
// Room for the UTF-16 form is the text's length in bytes; the result counts bytes.
ULONG Wide(const char* utf8, WCHAR* wide, ULONG room);

// Reading a file: "C:/path", or "unix/path" for one of the machine below.
NTSTATUS OpenFile(const char* name, HANDLE* file);
NTSTATUS ReadAt(HANDLE file, ULONGLONG offset, void* data, ULONG size);
