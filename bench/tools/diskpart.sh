# A stand-in: a strict reader of the script verbs that virtual disks and empty disks need. The VHD and
# VHDX files are real (qemu-img), so is the NTFS on them where the machine allows it; attaching is the
# bench's own. vdisks/KEY describes one file: path, part.img (its first partition while attached), letter.
# On the bench's disks (pdisk.sh) the partition tables are real (sfdisk), formatting is not. Fault:
# "half" (dies after the second line).
source "$bench/tools/volume.sh"
source "$bench/tools/vdisk.sh"
source "$bench/tools/pdisk.sh"

[[ ${args[0]:-} =~ ^/[sS]$ && ${#args[@]} == 2 ]] || refuse "usage: /S SCRIPT, given: ${args[*]}"
[[ -f ${paths[1]:-} ]] || refuse "The script file ${args[1]} does not exist"

selected='' partition=no  # a virtual disk
disk='' focus=''          # a disk, its partition

fail_line() { refuse "line \"$line\": $1"; }

# Windows paths of a script reach their files through the drives' links, any case.
script_path() {
  local text=$1 letter
  [[ $text =~ ^[A-Za-z]:\\ ]] || fail_line "no absolute path"
  letter=$(letter_of "${text:0:2}")
  text=${text:3}
  any_case "$(drive_folder "$letter")" "${text//\\//}"
}

need_selected() { [[ -n $selected ]] || fail_line "There is no virtual disk selected."; }
need_attached() { need_selected; vdisk_attached "$selected" || fail_line "The virtual disk is not attached."; }

do_create_vdisk() {
  local file=$1 megabytes=$2 type=$3 path
  path=$(script_path "$file") || exit
  [[ ! -e $path ]] || fail_line "The file exists."
  [[ -d $(dirname "$path") ]] || fail_line "The system cannot find the path specified."
  ((megabytes >= 3)) || fail_line "The size is too small."
  vdisk_create "$path" "$megabytes" "${type,,}" || fail_line "qemu-img could not make it"
  selected=$path
  say "  100 percent completed" "" "DiskPart successfully created the virtual disk file."
}

do_select_vdisk() {
  local path
  path=$(script_path "$1") || exit
  [[ -f $path ]] || fail_line "The system cannot find the file specified."
  selected=$path partition=no disk=''
  say "DiskPart successfully selected the virtual disk file."
}

do_attach() {
  need_selected
  vdisk_attached "$selected" && fail_line "The virtual disk is already attached."
  vdisk_open "$selected" || fail_line "The virtual disk is corrupt or of an unknown kind."
  say "  100 percent completed" "" "DiskPart successfully attached the virtual disk file."
}

do_detach() {
  need_attached
  vdisk_close "$selected" || fail_line "The volume is in use."
  say "DiskPart successfully detached the virtual disk file."
}

do_create_partition() {
  need_attached
  vdisk_has_partition "$selected" && fail_line "There is no room for another partition."
  vdisk_partition "$selected"
  partition=yes
  say "DiskPart succeeded in creating the specified partition."
}

do_format() {
  need_attached
  [[ $partition == yes ]] || fail_line "There is no volume selected."
  ((${#1} <= 32)) || fail_line "The label is too long."
  vdisk_format "$selected" "$1"
  say "  100 percent completed" "" "DiskPart successfully formatted the volume."
}

do_assign() {
  need_attached
  [[ $partition == yes ]] || fail_line "There is no volume selected."
  [[ ! -L $WINEPREFIX/dosdevices/${1,,}: ]] || fail_line "The specified drive letter is not free to be assigned."
  vdisk_assign "$selected" "${1,,}" || fail_line "The volume could not be mounted."
  say "DiskPart successfully assigned the drive letter or mount point."
}

do_select_disk() {
  [[ -f $(pdisk_image "$1") ]] || fail_line "The disk you specified is not valid."
  disk=$1 focus='' selected=''
  say "Disk $disk is now the selected disk."
}

need_disk() { [[ -n $disk ]] || fail_line "There is no disk selected."; }
need_focus() { need_disk; [[ -n $focus ]] || fail_line "There is no partition selected."; }

do_clean() {
  need_disk
  pdisk_clean "$disk"
  focus=''
  say "DiskPart succeeded in cleaning the disk."
}

# Tables are only converted while they are empty, and only into another kind.
do_convert() {
  local style=gpt
  need_disk
  [[ ${1,,} == gpt ]] || style=dos
  (($(pdisk_partitions "$disk") == 0)) || fail_line "The specified disk is not convertible."
  [[ $(pdisk_style "$disk") != "$style" ]] || fail_line "The disk you specified is of this kind already."
  pdisk_label "$disk" "$style" || fail_line "sfdisk could not write the table"
  say "DiskPart successfully converted the selected disk to ${1^^} format."
}

do_create_disk_partition() {
  local kind=${1,,} type
  need_disk
  [[ -n $(pdisk_style "$disk") ]] || pdisk_label "$disk" dos
  case $kind:$(pdisk_style "$disk") in
    efi:gpt) type=C12A7328-F81F-11D2-BA4B-00A0C93EC93B ;;
    msr:gpt) type=E3C9E316-0B5C-4DB8-817D-F92DF00215AE ;;
    primary:gpt) type=EBD0A0A2-B9E5-4433-87C0-68B6B72699C7 ;;
    primary:dos) type=7 ;;
    *) fail_line "The selected disk is not of the kind that such a partition needs." ;;
  esac
  focus=$(pdisk_add "$disk" "$type" "$2") || fail_line "No usable free extent could be found."
  say "DiskPart succeeded in creating the specified partition."
}

do_format_disk_partition() {
  need_focus
  ((${#2} <= 32)) || fail_line "The label is too long."
  pdisk_format "$disk" "$focus" "$1" "$2" || fail_line "The volume did not come."
  say "  100 percent completed" "" "DiskPart successfully formatted the volume."
}

do_active() {
  need_focus
  [[ $(pdisk_style "$disk") == dos ]] || fail_line "The selected disk is not a fixed MBR disk."
  pdisk_active "$disk" "$focus" || fail_line "sfdisk could not write the table"
  say "DiskPart marked the current partition as active."
}

do_assign_disk_letter() {
  need_focus
  [[ ! -L $WINEPREFIX/dosdevices/${1,,}: ]] || fail_line "The specified drive letter is not free to be assigned."
  pdisk_assign "$disk" "$focus" "${1^^}" || fail_line "There is no volume selected."
  say "DiskPart successfully assigned the drive letter or mount point."
}

do_list() { say "$(awk -F '\t' -v OFS=' ' -v kind="$1" '$1 == kind { print $1, $2, $4 }' "$bench/disks/table")"; }

# The verbs of disks; fails for a line that is none of them.
run_disk_line() {
  local quoted='"([^"]*)"'
  if [[ $1 =~ ^select\ disk\ ([0-9]+)$ ]]; then do_select_disk "${BASH_REMATCH[1]}"
  elif [[ $1 =~ ^(list|detail)\ (disk|volume)$ ]]; then do_list "${BASH_REMATCH[2]}"
  elif [[ -z $disk ]]; then return 1
  elif [[ $1 =~ ^clean$ ]]; then do_clean
  elif [[ $1 =~ ^convert\ (gpt|mbr)$ ]]; then do_convert "${BASH_REMATCH[1]}"
  elif [[ $1 =~ ^create\ partition\ (efi|msr|primary)(\ size=([0-9]+))?$ ]]; then
    do_create_disk_partition "${BASH_REMATCH[1]}" "${BASH_REMATCH[3]}"
  elif [[ $1 =~ ^format\ quick\ fs=(fat32|ntfs)\ label=$quoted$ ]]; then
    do_format_disk_partition "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}"
  elif [[ $1 =~ ^active$ ]]; then do_active
  elif [[ $1 =~ ^assign\ letter=([a-z])$ ]]; then do_assign_disk_letter "${BASH_REMATCH[1]}"
  else return 1
  fi
}

run_line() {
  local rest=$1 quoted='"([^"]+)"'
  shopt -s nocasematch
  if [[ $rest =~ ^rem(\ |$) ]] || run_disk_line "$rest"; then return; fi
  if [[ $rest =~ ^create\ vdisk\ file=$quoted\ maximum\ ([0-9]+)\ type=(fixed|expandable)$ ]]; then
    do_create_vdisk "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" "${BASH_REMATCH[3]}"
  elif [[ $rest =~ ^select\ vdisk\ file=$quoted$ ]]; then do_select_vdisk "${BASH_REMATCH[1]}"
  elif [[ $rest =~ ^attach\ vdisk$ ]]; then do_attach
  elif [[ $rest =~ ^detach\ vdisk$ ]]; then do_detach
  elif [[ $rest =~ ^create\ partition\ primary$ ]]; then do_create_partition
  elif [[ $rest =~ ^format\ fs=ntfs(\ label=($quoted|[^\ ]*))?\ quick$ ]]; then
    do_format "${BASH_REMATCH[3]:-${BASH_REMATCH[2]}}"
  elif [[ $rest =~ ^assign\ letter=([a-z])$ ]]; then do_assign "${BASH_REMATCH[1]}"
  elif [[ $rest =~ ^exit$ ]]; then exit 0
  else refuse_code=1 fail_line "the arguments specified for this command are not valid"
  fi
}

lines=0
say "" "DiskPart version 10.0.19041.964" ""
while IFS= read -r line || [[ -n $line ]]; do
  line=${line%$'\r'}
  [[ -z ${line// /} ]] || run_line "$line"
  if ((++lines == 2)) && fault half >/dev/null; then
    note "ERROR asked to do half"
    exit 1
  fi
done <"${paths[1]}"
