# Volumes of a run: volumes/NAME is the folder behind a volume, disks/NAME.img its NTFS image when
# there is one; its row in disks/table says where it lies, its letters, file system, serial number
# and label (bench/disk/disk_table.h). Used by the bench and by its tools. Finds set: bench.

volume_letters=4 volume_file_system=5 volume_serial=6 volume_name=7  # fields of a row

volume_exists() { [[ -d $bench/volumes/$1 ]]; }
volume_image() { echo "$bench/disks/$1.img"; }
volume_is_ntfs() { [[ -f $(volume_image "$1") ]]; }
volume_kind() { volume_is_ntfs "$1" && echo "real NTFS" || echo folder; }

# volume_behind LETTER: its name.
volume_behind() {
  local folder
  folder=$(readlink "$bench/prefix/dosdevices/$1:") && [[ $folder == "$bench/volumes/"* ]] && basename "$folder"
}

# volume_set NAME FIELD VALUE [FIELD VALUE]...: nothing happens to a volume that lies on no disk.
volume_set() {
  local name=$1
  shift
  awk -v name="$name" -v changes="$(printf '%s\t' "$@")" 'BEGIN { FS = OFS = "\t"; count = split(changes, change) }
    $1 == "volume" && $2 == name { for (i = 1; i + 1 <= count; i += 2) $change[i] = change[i + 1] } 1' \
    "$bench/disks/table" >"$bench/disks/table.new" && mv "$bench/disks/table.new" "$bench/disks/table"
}

volume_label() { awk -v name="$1" 'BEGIN { FS = "\t" } $1 == "volume" && $2 == name { print $7 }' "$bench/disks/table"; }

volume_mounted() { mountpoint -q "$bench/volumes/$1"; }

volume_mount() {
  volume_is_ntfs "$1" || return 0
  ntfs-3g -o big_writes,streams_interface=windows "$(volume_image "$1")" "$bench/volumes/$1" >/dev/null 2>&1
}

# Fails when something still holds a file open; a volume in use must never be formatted below it.
volume_unmount() {
  local try
  for try in 1 2 3 4 5 6 7 8 9 10; do
    volume_mounted "$1" || return 0
    umount "$bench/volumes/$1" 2>/dev/null && return 0
    sleep 0.3
  done
  return 1
}

# umount returns before the file system's process has written its last block.
volume_settle() {
  local image try
  image=$(volume_image "$1")
  for try in {1..50}; do
    pgrep -f "ntfs-3g .*$image" >/dev/null || return 0
    sleep 0.1
  done
}

volume_format() {
  if volume_is_ntfs "$1"; then
    volume_unmount "$1" || return 1
    volume_settle "$1"
    mkntfs -F -Q -q -L "$2" "$(volume_image "$1")" >/dev/null 2>&1 || return 1
    volume_mount "$1" || return 1
  else
    find "$bench/volumes/$1" -mindepth 1 -delete || return 1
  fi
  volume_set "$1" $volume_file_system NTFS $volume_serial "$SRANDOM" $volume_name "$2"
}
