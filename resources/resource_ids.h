#pragma once
/* Numbers of the resources in the executables; read by the resource compiler and by C++ alike. */

/* The lowest number is the icon that the shell shows for the program. */
#define PAVOLINE_ICON_MAIN 1

/* Small images of the system menu, each in 16, 20, 24 and 32 pixels. */
#define PAVOLINE_ICON_SAVE 101
#define PAVOLINE_ICON_TOOLS 102
#define PAVOLINE_ICON_APPLY_MODE 103
#define PAVOLINE_ICON_VIRTUAL_DISK 104
#define PAVOLINE_ICON_HELP 105
#define PAVOLINE_ICON_ABOUT 106
#define PAVOLINE_ICON_LANGUAGE 107
#define PAVOLINE_ICON_COMPUTER_NAME 108
#define PAVOLINE_ICON_BOOT_REPAIR 109
#define PAVOLINE_ICON_BACKUP 110
#define PAVOLINE_ICON_PARTITION 111
#define PAVOLINE_ICON_GHOST 112
