# Volumes of a run: volumes/LETTER is the folder behind the drive, disks/LETTER.img its NTFS image
# when there is one, disks/LETTER.label its label. Used by the bench and by its tools.
# Finds set: bench.

volume_exists() { [[ -d $bench/volumes/$1 ]]; }
volume_image() { echo "$bench/disks/$1.img"; }
volume_is_ntfs() { [[ -f $(volume_image "$1") ]]; }
volume_kind() { volume_is_ntfs "$1" && echo "real NTFS" || echo folder; }
volume_label() { cat "$bench/disks/$1.label" 2>/dev/null || true; }

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
  printf '%s' "$2" >"$bench/disks/$1.label"
}
