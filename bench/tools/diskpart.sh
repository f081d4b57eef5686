# A strict reader of the script verbs that virtual disks need. The VHD and VHDX files are real
# (qemu-img), so is the NTFS on them where the machine allows it; attaching is the bench's own.
# vdisks/KEY describes one file: path, part.img (its first partition while attached), letter. Fault:
# "half" (dies after the second line).
source "$bench/tools/volume.sh"
source "$bench/tools/vdisk.sh"

[[ ${args[0]:-} =~ ^/[sS]$ && ${#args[@]} == 2 ]] || refuse "usage: /S SCRIPT, given: ${args[*]}"
[[ -f ${paths[1]:-} ]] || refuse "The script file ${args[1]} does not exist"

selected='' partition=no

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
  selected=$path partition=no
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

run_line() {
  local rest=$1 quoted='"([^"]+)"'
  shopt -s nocasematch
  if [[ $rest =~ ^create\ vdisk\ file=$quoted\ maximum\ ([0-9]+)\ type=(fixed|expandable)$ ]]; then
    do_create_vdisk "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" "${BASH_REMATCH[3]}"
  elif [[ $rest =~ ^select\ vdisk\ file=$quoted$ ]]; then do_select_vdisk "${BASH_REMATCH[1]}"
  elif [[ $rest =~ ^attach\ vdisk$ ]]; then do_attach
  elif [[ $rest =~ ^detach\ vdisk$ ]]; then do_detach
  elif [[ $rest =~ ^create\ partition\ primary$ ]]; then do_create_partition
  elif [[ $rest =~ ^format\ fs=ntfs\ label=($quoted|[^\ ]*)\ quick$ ]]; then
    do_format "${BASH_REMATCH[2]:-${BASH_REMATCH[1]}}"
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
