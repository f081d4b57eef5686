# Virtual disks behind diskpart: an image file of any kind qemu-img knows, one partition on it.
# Finds set: bench; uses volume.sh, request_drive and free_letter.

partition_start=$((1024 * 1024))  # bytes, as Windows aligns it

vdisk_folder() { echo "$bench/vdisks/$(cksum <<<"$1" | cut -d' ' -f1)"; }
vdisk_attached() { [[ -d $(vdisk_folder "$1") ]]; }
vdisk_has_partition() { [[ -f $(vdisk_folder "$1")/partitioned ]]; }

vdisk_format_name() {
  case ${1,,} in
    *.vhdx) echo vhdx ;;
    *) echo vpc ;;
  esac
}

vdisk_create() {
  local kind=dynamic format
  [[ $3 == fixed ]] && kind=fixed
  format=$(vdisk_format_name "$1")
  local options=subformat=$kind
  [[ $format == vhdx ]] || options+=,force_size=on
  qemu-img create -q -f "$format" -o "$options" "$1" "$2M"
}

# The disk as a raw file, its first partition on its own where it has one.
vdisk_open() {
  local folder
  folder=$(vdisk_folder "$1")
  [[ $(head -c 8 "$1") == vhdxfile || $(tail -c 512 "$1" | head -c 8) == conectix ]] || return 1
  mkdir -p "$folder"
  if ! qemu-img convert -q -f "$(vdisk_format_name "$1")" -O raw "$1" "$folder/disk.raw" 2>/dev/null; then
    rm -rf "$folder"
    return 1
  fi
  if [[ $(od -An -tx1 -j 510 -N 2 "$folder/disk.raw" | tr -d ' ') == 55aa ]]; then
    touch "$folder/partitioned"
    cut_partition "$folder"
    # A formatted volume gets the first free letter by itself, one that is not formatted gets none.
    if vdisk_formatted "$folder"; then vdisk_assign "$1" "$(free_letter f g h i j k l m n o p q r s t)"; fi
  fi
}

vdisk_formatted() { [[ $(head -c 7 "$1/part.img" | tail -c 4) == NTFS || -f $1/formatted ]]; }

cut_partition() {
  dd if="$1/disk.raw" of="$1/part.img" bs=1M skip=$((partition_start >> 20)) conv=sparse status=none
  truncate -s $(($(stat -c %s "$1/disk.raw") - partition_start)) "$1/part.img"
}

vdisk_partition() {
  local folder sectors
  folder=$(vdisk_folder "$1")
  sectors=$((($(stat -c %s "$folder/disk.raw") - partition_start) / 512))
  # One entry of type 7 in the partition table of the first sector, then its mark.
  {
    printf '\0\1\1\0\7\376\377\377'
    perl -e 'print pack("VV", @ARGV)' $((partition_start / 512)) "$sectors"
  } | dd of="$folder/disk.raw" bs=1 seek=446 conv=notrunc status=none
  printf '\125\252' | dd of="$folder/disk.raw" bs=1 seek=510 conv=notrunc status=none
  touch "$folder/partitioned"
  cut_partition "$folder"
}

vdisk_format() {
  local folder
  folder=$(vdisk_folder "$1")
  echo "$2" >"$folder/formatted"
  mkntfs -F -Q -q -L "$2" "$folder/part.img" >/dev/null 2>&1 || true
}

vdisk_assign() {
  local folder
  folder=$(vdisk_folder "$1")
  mkdir -p "$bench/volumes/$2"
  if [[ -f $bench/use-ntfs ]]; then
    ln -f "$folder/part.img" "$(volume_image "$2")"
    volume_mount "$2" || return 1
  fi
  echo "$2" >"$folder/letter"
  request_drive "$2" hd "$bench/volumes/$2"
}

# Writes the volume back into the file and takes the letter away.
vdisk_close() {
  local folder letter format options=()
  folder=$(vdisk_folder "$1")
  if [[ -f $folder/letter ]]; then
    letter=$(cat "$folder/letter")
    volume_unmount "$letter" || return 1
    volume_settle "$letter"
    rm -rf "$(volume_image "$letter")" "${bench:?}/volumes/$letter"
    request_drive "$letter" none
  fi
  [[ ! -f $folder/part.img ]] ||
    dd if="$folder/part.img" of="$folder/disk.raw" bs=1M seek=$((partition_start >> 20)) conv=sparse,notrunc status=none
  format=$(vdisk_format_name "$1")
  [[ $format == vhdx ]] || options=(-o force_size=on)
  qemu-img convert -q -f raw -O "$format" "${options[@]}" "$folder/disk.raw" "$1"
  rm -rf "$folder"
}
