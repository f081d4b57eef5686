/* The version resource; the including script defines PAVOLINE_FILE_NAME and
   PAVOLINE_FILE_DESCRIPTION. The number comes from the project's version by version.h. */
#include <winver.h>

#include "version.h"

VS_VERSION_INFO VERSIONINFO
FILEVERSION PAVOLINE_VERSION_NUMBERS
PRODUCTVERSION PAVOLINE_VERSION_NUMBERS
FILEFLAGSMASK VS_FFI_FILEFLAGSMASK
FILEFLAGS 0
FILEOS VOS_NT_WINDOWS32
FILETYPE VFT_APP
FILESUBTYPE VFT2_UNKNOWN
BEGIN
  BLOCK "StringFileInfo"
  BEGIN
    BLOCK "040904B0"
    BEGIN
      VALUE "CompanyName", "Pavoline contributors"
      VALUE "FileDescription", PAVOLINE_FILE_DESCRIPTION
      VALUE "FileVersion", PAVOLINE_VERSION_TEXT
      VALUE "InternalName", PAVOLINE_FILE_NAME
      VALUE "LegalCopyright", "\xA9 2026 Pavoline contributors, MIT License"
      VALUE "OriginalFilename", PAVOLINE_FILE_NAME
      VALUE "ProductName", "Pavoline"
      VALUE "ProductVersion", PAVOLINE_VERSION_TEXT
    END
  END
  BLOCK "VarFileInfo"
  BEGIN
    VALUE "Translation", 0x0409, 1200
  END
END
