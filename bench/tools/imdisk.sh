# Contents of a real ISO appear under a free drive letter that answers as a CD-ROM; the driver is a
# stand-in (the files are unpacked with xorriso instead of being mounted).

attach() {
  local iso='' iso_text='' mount='' i=1
  while ((i < ${#args[@]})); do
    case ${args[i]} in
      -m) i=$((i + 1)); mount=${args[i]:-} ;;
      -f) i=$((i + 1)); iso=${paths[i]:-} iso_text=${args[i]:-} ;;
      *) refuse "unknown option ${args[i]}" ;;
    esac
    i=$((i + 1))
  done
  [[ $mount == '#:' ]] || refuse "the program asks for the first free letter, given: $mount"
  [[ -s $iso ]] || { refuse_code=1 refuse "Error opening image file: The system cannot find the file specified"; }
  local letter
  letter=$(free_letter d e f g h i j k l m n o p q r s t u v w y z) || refuse "no drive letter is free"
  say "Creating device..."
  unpack "$iso" "$letter"
  say "Created device 0: ${letter^^}: -> $iso_text"
}

# A file that is no ISO gives a drive without a readable file system, as on Windows.
unpack() {
  local folder=$bench/iso/$2
  rm -rf "$folder"
  mkdir -p "$folder"
  if xorriso -osirrox on -indev "$1" -extract / "$folder" >/dev/null 2>&1 && [[ -n $(ls -A "$folder") ]]; then
    chmod -R u+w "$folder"
    request_drive "$2" cdrom "$folder"
  else
    note "no ISO file system in the file"
  fi
}

detach() {
  [[ ${#args[@]} == 3 && ${args[1]} == -m ]] || refuse "usage: ${args[0]} -m X:, given: ${args[*]}"
  local letter
  letter=$(letter_of "${args[2]}") || refuse "no drive: ${args[2]}"
  [[ -d $bench/iso/$letter ]] || { refuse_code=1 refuse "No ImDisk drive at ${args[2]}"; }
  rm -rf "${bench:?}/iso/$letter"
  request_drive "$letter" none
  say "Notifying applications..." "Flushing file buffers..." "Removing device..." "Removing mountpoint..." "Done."
}

case ${args[0]:-} in
  -a) attach ;;
  -D | -d) detach ;;
  *) refuse "unknown command ${args[0]:-}" ;;
esac
