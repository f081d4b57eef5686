# Prints which of the bench's tools do the real work here and which only stand in for it.
ntfs="real: mkntfs and ntfs-3g on an image file"
ntfs_possible || ntfs="stand-in: a plain folder is emptied (no root or no /dev/fuse here)"
while IFS='|' read -r name what; do
  printf '%-16s %s\n' "$name" "$what"
done <<TEXT
cmd|real: Wine's own command interpreter
wimlib-imagex|real: Debian's wimtools; --compact and --wimboot are checked and left out, only Windows has them
format|$ntfs
imdisk|real ISO contents (xorriso); the driver is a stand-in, a folder gets the drive letter
diskpart|stand-in; real VHD and VHDX files (qemu-img), NTFS as for format; real partition tables (sfdisk) on disks
disks|real partition tables (sfdisk) on disk images; a kernel-mode driver of the bench answers for them
mount points|stand-in: two functions that this Wine lacks move the letters of the bench's volumes
dism|stand-in: copies drivers into the image's driver store
bcdboot|stand-in: copies boot files and writes a readable boot store
bootsect|stand-in: records the boot code asked for
shutdown|stand-in: records the restart
takeown, cacls|stand-ins: check their arguments
ghost|stand-in: unpacks the bench's own image behind a window that counts up
companion tools|stand-ins: record that they were started
TEXT
