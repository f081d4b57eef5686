# Helpers of the tool scripts. They find set: tool, args and paths (the same arguments as Unix paths,
# empty where an argument holds none), bench (the run's folder), requests, note_file.

one_line() { tr '\t\r\n' '   ' <<<"$1" | sed 's/ *$//'; }

say() { printf '%s\r\n' "$@"; }

note() { printf '%s' "$*" >"$note_file"; }

# refuse MESSAGE: the call is one that the real tool would not accept.
refuse() {
  note "ERROR $*"
  printf '%s: %s\r\n' "$tool" "$*" >&2
  exit "${refuse_code:-87}"
}

# fault KIND: prints the value that faults/TOOL gives to a fault (a line "KIND VALUE"), fails when absent.
fault() {
  [[ -f $bench/faults/$tool ]] || return 1
  awk -v kind="$1" '$1 == kind { print $2; found = 1 } END { exit !found }' "$bench/faults/$tool"
}

# Every tool knows "fail CODE" (does nothing), "hang" (does nothing, for ever), "wait SECONDS" (first).
apply_common_faults() {
  local value
  if value=$(fault wait); then sleep "$value"; fi
  if fault hang >/dev/null; then sleep infinity; fi
  if value=$(fault fail); then
    note "ERROR asked to fail"
    echo "$tool: asked to fail" >&2
    exit "${value:-1}"
  fi
}

# letter_of "E:" or "E:\": the lower-case letter, nothing when it is no drive.
letter_of() { [[ $1 =~ ^([A-Za-z]):\\?$ ]] && tr '[:upper:]' '[:lower:]' <<<"${BASH_REMATCH[1]}"; }

drive_folder() { local at=$WINEPREFIX/dosdevices/$1:; [[ -d $at ]] && readlink -f "$at"; }

# any_case BASE RELATIVE: the path with the letters' case that the folders really have; parts that do
# not exist stay as given.
any_case() {
  local at=$1 part found
  local -a parts
  IFS=/ read -ra parts <<<"$2"
  for part in "${parts[@]}"; do
    [[ -n $part ]] || continue
    found=$(find "$at" -mindepth 1 -maxdepth 1 -iname "$part" -print -quit 2>/dev/null)
    at=${found:-$at/$part}
  done
  printf '%s\n' "$at"
}

# request_drive LETTER KIND FOLDER: what the bridge tells Wine's mount manager once the script is done.
request_drive() { echo "define $1 $2 ${3:-}" >>"$requests"; }

free_letter() {
  local letter
  for letter in "$@"; do
    [[ -e $WINEPREFIX/dosdevices/$letter: || -L $WINEPREFIX/dosdevices/$letter: ]] || { echo "$letter"; return; }
  done
  return 1
}
