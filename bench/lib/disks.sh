# The disks of a run: D: source, S: boot, E: install.
source "$bench_source/tools/volume.sh"

ntfs_possible() {
  [[ ${BENCH_NTFS:-yes} == yes ]] && ((EUID == 0)) && [[ -w /dev/fuse ]] && command -v mkntfs ntfs-3g >/dev/null
}

# make_volume LETTER BYTES LABEL KIND (ntfs or folder): a new volume and its letter in the prefix.
make_volume() {
  local letter=$1 bytes=$2 label=$3 kind=$4
  mkdir -p "$bench/volumes/$letter"
  if [[ $kind == ntfs ]] && ntfs_possible; then
    truncate -s "$bytes" "$(volume_image "$letter")"
    if ! { volume_format "$letter" "$label" && volume_mounted "$letter"; }; then
      rm -f "$(volume_image "$letter")"
    fi
  fi
  printf '%s' "$label" >"$bench/disks/$letter.label"
  ln -sfn "$bench/volumes/$letter" "$bench/prefix/dosdevices/$letter:"
}

partition_line() {
  local IFS=$'\t'
  printf '%s\n' "$*" >>"$bench/disks/partitions"
}

gib=$((1024 * 1024 * 1024))

make_disks() {
  mkdir -p "$bench/disks" "$bench/volumes"
  ! ntfs_possible || touch "$bench/use-ntfs"
  make_volume d $((64 * gib)) Media folder
  make_volume s $((260 * 1024 * 1024)) System folder
  make_volume e $((40 * gib)) "Old Windows" ntfs
  # Addresses as Wine's own device queries number these drives, the system drive being the first.
  : >"$bench/disks/partitions"
  partition_line 1:4 S: $((260 * 1024 * 1024)) FAT32 EFI GPT 0 "Bench Disk"
  partition_line 1:3 E: $((40 * gib)) NTFS Primary GPT 0 "Bench Disk"
  partition_line 1:2 D: $((64 * gib)) NTFS Primary GPT 0 "Bench Disk"
}

unmount_disks() {
  local image
  for image in "$bench"/disks/*.img; do
    [[ -f $image ]] || continue
    image=$(basename "$image" .img)
    volume_unmount "$image" || umount -l "$bench/volumes/$image" 2>/dev/null || true
  done
}
