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

# fault KIND: prints the value that faults/TOOL, or faults/TOOL-VERB when the first argument is a plain
# word, gives to a fault (a line "KIND VALUE"); fails when absent.
fault() {
  local files=("$bench/faults/$tool")
  [[ ! ${args[0]:-} =~ ^[a-z]+$ ]] || files+=("$bench/faults/$tool-${args[0]}")
  { cat "${files[@]}" 2>/dev/null || true; } | awk -v kind="$1" '$1 == kind { print $2; found = 1 } END { exit !found }'
}

# Every tool knows "fail CODE" (does nothing), "hang" (does nothing, for ever), "wait SECONDS" (first),
# "output KIND" (works, but what it prints is spoilt), "end CODE" (works, then says that it has not).
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

# spoil KIND: standard input as it shall come out.
spoil() {
  case $1 in
    silent) cat >/dev/null ;;
    garbage) cat >/dev/null; perl -e 'srand 1; print pack("C*", map { int rand 256 } 1 .. 65536)' ;;
    utf8) perl -0777 -pe 's/\0|^\xFF\xFE//g; s/\r\r?\n/\r\n/g' ;;
    utf16) iconv -f UTF-8 -t UTF-16LE ;;
    line) perl -e 'print "x" x 65536 for 1 .. 1024'; cat ;;
    *) note "ERROR unknown kind of output $1" ;;
  esac
}

# run_script FILE: with the faults of every tool around it.
run_script() {
  local kind result
  apply_common_faults
  if kind=$(fault output); then
    [[ $kind != silent ]] || exec 2>/dev/null
    (source "$1") | spoil "$kind"
    result=${PIPESTATUS[0]}
  else
    (source "$1")
    result=$?
  fi
  if ((result == 0)) && fault end >/dev/null; then
    note "ERROR asked to end badly"
    result=$(fault end)
  fi
  exit "$result"
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
