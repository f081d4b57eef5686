# The disks of a run. Sparse images hold their partition tables and nothing else; the volumes on them
# are folders, the install volume's on an NTFS image of its own. disk/ shows both to Wine.
source "$bench_source/tools/volume.sh"

ntfs_possible() {
  [[ ${BENCH_NTFS:-yes} == yes ]] && ((EUID == 0)) && [[ -w /dev/fuse ]] && command -v mkntfs ntfs-3g >/dev/null
}

# table_row disk|volume NAME FIELD...: in place of the row that there was.
table_row() {
  local IFS=$'\t' table=$bench/disks/table
  { [[ ! -f $table ]] || awk -F '\t' -v kind="$1" -v name="$2" '$1 != kind || $2 != name' "$table"; } >"$table.new"
  printf '%s\n' "$*" >>"$table.new"
  mv "$table.new" "$table"
}

# add_disk NUMBER SIZE MODEL [TRAITS]: the partitions are read from standard input, as sfdisk takes
# them; without any the disk is raw. SIZE "-": a drive without a medium.
add_disk() {
  local image=$bench/disks/$1.disk script
  script=$(cat)
  rm -f "$image"
  if [[ $2 != - ]]; then
    truncate -s "$2" "$image"
    [[ -z $script ]] || sfdisk -q "$image" <<<"$script" >/dev/null || die "sfdisk refused the partitions of disk $1"
  else
    image=-
  fi
  table_row disk "$1" "$image" "$3" "${4:-}"
}

# add_volume NAME PLACE LETTERS FILE-SYSTEM LABEL: its row, and its folder behind its letters.
add_volume() {
  local name=$1 letters=$3 i
  mkdir -p "$bench/volumes/$name"
  table_row volume "$name" "$2" "$letters" "$4" "$SRANDOM" "$5"
  [[ $letters != - ]] || return 0
  for ((i = 0; i < ${#letters}; ++i)); do set_letter_folder "${letters:i:1}" "$name"; done
}

set_letter_folder() { ln -sfn "$bench/volumes/$2" "$bench/prefix/dosdevices/${1,,}:"; }

make_ntfs() {
  truncate -s "$2" "$(volume_image "$1")"
  if ! { volume_format "$1" "$3" && volume_mounted "$1"; }; then rm -f "$(volume_image "$1")"; fi
}

basic_type=EBD0A0A2-B9E5-4433-87C0-68B6B72699C7
reserved_type=E3C9E316-0B5C-4DB8-817D-F92DF00215AE
first_disk_partitions=4

# Before Wine starts: its mount manager makes a device for each letter that it finds then.
make_disks() {
  mkdir -p "$bench/disks" "$bench/volumes"
  ! ntfs_possible || touch "$bench/use-ntfs"
  add_disk 0 106G "Bench Disk" <<TEXT
label: gpt
size=260M, type=uefi
size=16M, type=$reserved_type
size=40G, type=$basic_type
size=64G, type=$basic_type
TEXT
  add_volume s 0/1 S FAT32 System
  add_volume e 0/3 E NTFS "Old Windows"
  add_volume d 0/4 D NTFS Media
  [[ ! -f $bench/use-ntfs ]] || make_ntfs e 40G "Old Windows"
  cp "$bench/disks/table" "$bench/disks/table.begin"
}

# link_disks [LETTER FOLDER]...: the links below Wine follow the table.
link_disks() { (cd "$bench/prefix/drive_c" && wine "$(bench_bin "$bench_arch")/link-disks.exe" "$@"); }

# Says what is wrong when the lister does not see the disks; an application without it is not asked.
check_disks() {
  local program="$bench/prefix/drive_c/$bench_app/Bin/CxDir/$bench_arch/CxDir.exe" lines
  link_disks || die "the bench's disks are not there: Wine ($(wine --version)) has not loaded the kernel-mode driver benchdisk.sys"
  [[ -f $program ]] || return 0
  lines=$(cd "$bench/prefix/drive_c" && timeout 60 wine "$program" -vaskor 2>&1 | tr -d '\r') || true
  [[ $(grep -c . <<<"$lines") == "$first_disk_partitions" ]] ||
    die "CxDir must print $first_disk_partitions partitions on the bench's disks, not:"$'\n'"$lines"
}

# The mount manager learns of a new folder by a letter, which it then keeps for itself: each gets
# another one, and the table has the last word on what is seen.
link_volumes() {
  local folder name letter define=()
  for folder in "$bench"/volumes/*; do
    name=$(basename "$folder")
    grep -qsx "$name ." "$bench/disks/born" || [[ $name == ? ]] || {
      letter=$(spare_letter)
      echo "$name $letter" >>"$bench/disks/born"
      define+=("$letter" "$folder")
    }
  done
  link_disks "${define[@]}" || die "the disks below Wine did not follow the table"
  for ((letter = 0; letter < ${#define[@]}; letter += 2)); do rm -f "$bench/prefix/dosdevices/${define[letter]}:"; done
}

# Those from J to R are the tests' own, F, V and W the first that the program and the tools take.
spare_letter() {
  local letter
  for letter in a b z y u t i h g; do
    [[ -L $bench/prefix/dosdevices/$letter: ]] || grep -qs " $letter$" "$bench/disks/born" || { echo "$letter"; return; }
  done
  die "no letter is left for another volume"
}

# give_letter LETTER NAME: taken from whoever has it; "none" only takes it away.
give_letter() {
  local letter=${1^} before letters
  rm -f "$bench/prefix/dosdevices/${letter,}:"
  while IFS=$'\t' read -r _ before _ letters _; do
    letters=${letters//$letter/}
    volume_set "$before" $volume_letters "${letters:--}"
  done < <(awk -F '\t' -v letter="$letter" '$1 == "volume" && index($4, letter)' "$bench/disks/table")
  if [[ $2 != none ]]; then
    letters=$(awk -F '\t' -v name="$2" '$1 == "volume" && $2 == name { print $4 }' "$bench/disks/table")
    [[ -n $letters ]] || die "there is no volume $2"
    volume_set "$2" $volume_letters "${letters/-/}$letter"
    set_letter_folder "$letter" "$2"
  fi
  link_volumes
}

# A second disk: an EFI system partition and a data partition, both without a letter.
add_second_disk() {
  add_disk 1 33G "Second Disk" <<TEXT
label: gpt
size=260M, type=uefi
size=32G, type=$basic_type
TEXT
  add_volume esp 1/1 - FAT32 "Second ESP"
  add_volume other 1/2 - NTFS Other
  link_volumes
}

# The table as it began; what was added since is gone.
restore_disks() {
  cmp -s "$bench/disks/table" "$bench/disks/table.begin" && return 0
  local disk letter before
  before=$(cut -f 1-4 "$bench/disks/table")
  cp "$bench/disks/table.begin" "$bench/disks/table"
  [[ $before != "$(cut -f 1-4 "$bench/disks/table")" ]] || return 0
  for disk in "$bench"/disks/*.disk; do [[ $disk == */0.disk ]] || rm -f "$disk"; done
  for letter in "$bench"/prefix/dosdevices/?:; do [[ $(readlink "$letter") != "$bench"/volumes/* ]] || rm -f "$letter"; done
  for letter in d e s; do set_letter_folder "$letter" "$letter"; done
  link_disks
}

unmount_disks() {
  local image
  for image in "$bench"/disks/*.img; do
    [[ -f $image ]] || continue
    image=$(basename "$image" .img)
    volume_unmount "$image" || umount -l "$bench/volumes/$image" 2>/dev/null || true
  done
}
