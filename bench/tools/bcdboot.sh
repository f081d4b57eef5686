# Stand-in: puts boot files and a readable boot store where the real tool puts them. Fault: "half" (boot
# files, no store).

windows=${paths[0]:-}
[[ -n ${args[0]:-} && ${args[0]} != /* ]] || refuse "the Windows folder comes first"
boot='' firmware=bios locale=en-US
i=1
while ((i < ${#args[@]})); do
  value=${args[i + 1]:-}
  case ${args[i],,} in
    /s) boot=$value ;;
    /f) firmware=${value,,} ;;
    /l) locale=$value ;;
    *) refuse "unknown option ${args[i]}" ;;
  esac
  [[ -n $value && $value != /* ]] || refuse "option ${args[i]} without a value"
  i=$((i + 2))
done
letter=$(letter_of "$boot") || refuse "/s takes a drive, given: $boot"
target=$(drive_folder "$letter") || refuse "the volume $boot does not exist"
[[ $firmware =~ ^(bios|uefi|all)$ ]] || refuse "unknown firmware $firmware"
[[ $locale =~ ^[a-z]{2,3}(-[A-Za-z]{2,8})*$ ]] || refuse "bad locale $locale"
[[ -n $windows && -d $windows ]] || refuse "the folder ${args[0]} does not exist"

# write_store FILE: entries gather, the newest last, as in a store that is added to.
write_store() {
  ! fault half >/dev/null || { note "ERROR asked to do half"; exit 1; }
  mkdir -p "$(dirname "$1")"
  printf 'windows=%s\nlocale=%s\nfirmware=%s\n\n' "${args[0]}" "$locale" "$2" >>"$1"
}

copy_boot_file() {
  local from
  from=$(any_case "$windows" "Boot/$1")
  [[ -f $from ]] || { refuse_code=193 refuse "Failure when attempting to copy boot files: \\Boot\\$1 is missing"; }
  mkdir -p "$(dirname "$2")"
  cp "$from" "$2"
}

if [[ $firmware != uefi ]]; then
  copy_boot_file PCAT/bootmgr "$(any_case "$target" bootmgr)"
  write_store "$(any_case "$target" Boot/BCD)" bios
fi
if [[ $firmware != bios ]]; then
  copy_boot_file EFI/bootmgfw.efi "$(any_case "$target" EFI/Microsoft/Boot/bootmgfw.efi)"
  copy_boot_file EFI/bootmgfw.efi "$(any_case "$target" EFI/Boot/bootx64.efi)"
  write_store "$(any_case "$target" EFI/Microsoft/Boot/BCD)" uefi
fi
say "Boot files successfully created."
