# Checks after an installation of the scene. Each says what does not hold; verify_failed counts.
# Finds set: bench, tree (what the install volume must hold), language, source_copy (or empty).

verify_failed=0
problem() {
  say_line "  FAILED: $*"
  verify_failed=$((verify_failed + 1))
}

# Sets verified to the number of files that are the same, byte for byte.
verify_files() {
  local line volume=$bench/volumes/e repository
  repository=$volume/Windows/System32/DriverStore/FileRepository
  while IFS= read -r line; do
    case $line in
      "Only in $volume/Windows: Panther" | "Only in $repository: net"[1-9].inf_amd64_*) ;;
      "Only in $volume: System Volume Information") [[ -n $source_copy ]] || problem "$line" ;;
      *) problem "$line" ;;
    esac
  done < <(diff -rq --no-dereference "$tree" "$volume" 2>&1)
  verified=$(find "$tree" -type f | wc -l)
  [[ -z $source_copy ]] || cmp "$source_copy" "$volume/System Volume Information/Install.wim" ||
    problem "the copied image differs from its source"
}

verify_answer_file() {
  local file=$bench/volumes/e/Windows/Panther/unattend.xml value
  [[ -f $file ]] || { problem "no answer file"; return; }
  [[ $(head -c 3 "$file" | od -An -tx1 | tr -d ' ') == efbbbf ]] || problem "the answer file lacks its mark"
  for value in 'arch="amd64"' "pc=\"$scene_pc\"" "group=\"$scene_group\"" "user=\"$scene_user\""; do
    grep -qF "$value" "$file" || problem "the answer file lacks $value"
  done
  ! grep -qF '%Pavoline-' "$file" || problem "a placeholder is left in the answer file"
}

verify_boot_files() {
  local boot=$bench/volumes/s store firmware
  cmp -s "$tree/Windows/Boot/PCAT/bootmgr" "$boot/bootmgr" || problem "bootmgr is not the system's"
  cmp -s "$tree/Windows/Boot/EFI/bootmgfw.efi" "$boot/EFI/Boot/bootx64.efi" || problem "bootx64.efi is not the system's"
  for store in Boot/BCD:bios EFI/Microsoft/Boot/BCD:uefi; do
    firmware=${store#*:}
    [[ $(cat "$boot/${store%:*}" 2>/dev/null) == "windows=E:\\Windows"$'\n'"locale=$language"$'\n'"firmware=$firmware" ]] ||
      problem "the boot store for $firmware does not start E:\\Windows in $language"
  done
  [[ $(cat "$bench/disks/s.bootsect" 2>/dev/null) == "code=nt60 mbr=yes" ]] || problem "no boot sector on S:"
}

verify_drivers() {
  local number found
  for ((number = 1; number <= scene_drivers; ++number)); do
    found=$(find "$bench/volumes/e/Windows/System32/DriverStore/FileRepository" -name "net$number.sys" -print -quit)
    [[ -n $found ]] && cmp -s "$found" "$bench/volumes/d/Driver packages/net $number/net$number.sys" ||
      problem "driver net$number was not added"
  done
}

# calls TOOL ARGUMENTS: how often the journal holds exactly this call.
calls() { cut -f1,2 "$bench/journal" | grep -cxF "$1"$'\t'"$2" || true; }

# The restart is not waited for by the program: its line may come after the program's end.
wait_for_restart() {
  local try
  for try in {1..50}; do
    [[ $(calls shutdown "-r -f -t 5") == 0 ]] || return 0
    sleep 0.1
  done
}

verify_journal() {
  local restart=$1 line
  ((restart == 0)) || wait_for_restart
  while IFS= read -r line; do problem "refused call: $line"; done < <(grep -P '\tERROR' "$bench/journal" || true)
  [[ $(calls fix.exe "E: S:") == 1 ]] || problem "the plug-in was not run once with E: S:"
  [[ $(calls shutdown "-r -f -t 5") == "$restart" ]] || problem "restarts issued: not $restart"
  [[ ! -e $bench/prefix/drive_c/windows/temp/apply.bat && ! -e $bench/prefix/drive_c/windows/temp/apply.xml ]] ||
    problem "apply.bat or apply.xml is left"
}

verify_all() {
  verify_files
  verify_answer_file
  verify_boot_files
  verify_drivers
  verify_journal "$1"
}
