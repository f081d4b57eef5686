# Real: Debian's wimtools does the work. Faults: "die PERCENT", "die-in Creating|metadata" (the phase),
# "pace MS" per progress update, "lf" (plain line feeds instead of the text-mode output of the Windows build).
# Switches that only Windows can honour are checked, noted in the journal and left out.

run_imaging() {
  local options=() value
  fault lf >/dev/null || options+=(--text)
  if value=$(fault pace); then options+=(--pace "$value"); fi
  if value=$(fault die); then options+=(--die "$value"); fi
  if value=$(fault die-in); then options+=(--die-in "$value"); fi
  perl "$bench/tools/paced.pl" "${options[@]}" -- wimlib-imagex "$@" && return
  local result=$?
  [[ " ${options[*]} " != *" --die"* ]] || note "ERROR asked to die"
  exit $result
}

source_file() {
  [[ -n ${paths[$1]} && -f ${paths[$1]} ]] || { refuse_code=47 refuse "ERROR: Failed to open \"${args[$1]}\""; }
}

info() {
  [[ ${#args[@]} == 3 && ${args[1]} == --xml ]] || refuse "usage: info --xml FILE, given: ${args[*]}"
  source_file 2
  run_imaging info "${paths[2]}" --xml
}

windows_only() {
  case $1 in
    --wimboot | --compact=xpress4k | --compact=xpress8k | --compact=xpress16k | --compact=lzx)
      note "$1 left out: this machine's build cannot do it" ;;
    *) refuse "unknown option $1" ;;
  esac
}

apply() {
  ((${#args[@]} >= 4)) || refuse "usage: apply FILE INDEX TARGET [OPTIONS], given: ${args[*]}"
  source_file 1
  [[ ${args[2]} =~ ^[1-9][0-9]*$ ]] || refuse "bad image index ${args[2]}"
  [[ -d ${paths[3]} ]] || { refuse_code=24 refuse "target ${args[3]} does not exist"; }
  local number parts=()
  for ((number = 4; number < ${#args[@]}; ++number)); do
    if [[ ${args[number]} == --ref=* ]]; then
      source_file "$number"
      parts+=("--ref=${paths[number]//\[/\\[}")  # no pattern on Windows
    else
      windows_only "${args[number]}"
    fi
  done
  run_imaging apply "${paths[1]}" "${args[2]}" "${paths[3]}" "${parts[@]}"
}

case ${args[0]:-} in
  info) info ;;
  apply) apply ;;
  --version) run_imaging --version ;;
  *) refuse "command \"${args[0]:-}\" is not one the program uses" ;;
esac
