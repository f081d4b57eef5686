# ./dev demo: a whole unattended installation through the real window, watched and then verified.
source "$bench_source/lib/build.sh"
source "$bench_source/lib/programs.sh"
source "$bench_source/lib/prefix.sh"
source "$bench_source/lib/disks.sh"
source "$bench_source/lib/image.sh"
source "$bench_source/lib/scene.sh"
source "$bench_source/lib/verify.sh"

demo_size=300 demo_source=wim demo_mode=normal demo_restart=1
demo_time_limit=900  # seconds

declare -A mode_commands=([normal]=2020 [wimboot]=2021 [wimcopy]=2022 [compact:xpress4k]=2023
  [compact:xpress8k]=2024 [compact:xpress16k]=2025 [compact:lzx]=2026)
declare -A mode_options=([wimboot]=--wimboot [wimcopy]=--wimboot [compact:xpress4k]=--compact=xpress4k
  [compact:xpress8k]=--compact=xpress8k [compact:xpress16k]=--compact=xpress16k [compact:lzx]=--compact=lzx)

read_demo_options() {
  while (($# > 0)); do
    case $1 in
      --size) demo_size=${2:?--size takes megabytes}; shift ;;
      --source) demo_source=${2:?--source takes wim, esd, swm, iso or gho}; shift ;;
      --mode) demo_mode=${2,,}; shift ;;
      --no-restart) demo_restart=0 ;;
      --folder) export BENCH_NTFS=no ;;
      *) die "unknown option $1" ;;
    esac
    shift
  done
  [[ $demo_source =~ ^(wim|esd|swm|iso|gho)$ ]] || die "--source takes wim, esd, swm, iso or gho"
  [[ $demo_source != swm || $demo_mode != wim* ]] || die "a split image is refused in this mode"
  [[ $demo_size =~ ^[0-9]+$ ]] || die "--size takes megabytes"
  [[ -n ${mode_commands[$demo_mode]:-} ]] || die "--mode takes ${!mode_commands[*]}"
}

# The last update that the imaging tool has written, as the program itself reads it.
last_update() {
  local log=$bench/prefix/drive_c/windows/temp/apply.xml
  [[ -f $log ]] || return 0
  tail -c 300 "$log" 2>/dev/null | tr '\r' '\n' | grep -a '%)' | tail -n 1 || true
}

press() { wine 'C:\press.exe' "$@" | tr -d '\r'; }

# Prints what has changed since the last call: a tool that was run, or the progress of the apply.
show_progress() {
  local calls update
  calls=$(wc -l <"$bench/journal")
  if ((calls > shown_calls)); then
    tail -n +$((shown_calls + 1)) "$bench/journal" | head -n $((calls - shown_calls)) |
      awk -F '\t' '{ printf "  ran %s %s\n", $1, substr($2, 1, 90) }'
    shown_calls=$calls
  fi
  update=$(last_update)
  [[ -z $update || $update == "$shown_update" ]] || printf '  %s\n' "$update"
  shown_update=$update
}

# One picture while the data phase is well under way.
shoot_in_the_middle() {
  [[ -z $demo_shot_taken ]] || return 0
  if [[ $demo_source == gho ]]; then
    local seconds
    [[ -n ${ghost_seen:-} ]] || { pgrep -f 'tools/ghost-restore|ghost.exe' >/dev/null && ghost_seen=$(date +%s); }
    [[ -n ${ghost_seen:-} ]] || return 0
    seconds=$(($(date +%s) - ghost_seen))
    ((seconds >= 3)) || return 0
  else
    [[ $shown_update =~ file\ data:.*\(([0-9]+)%\) ]] && ((BASH_REMATCH[1] >= 40)) || return 0
  fi
  import -window root "$demo_shot"
  demo_shot_taken=yes
}

installer_running() { kill -0 "$installer" 2>/dev/null; }

watch_installer() {
  local end=$((SECONDS + demo_time_limit))
  shown_calls=0 shown_update='' demo_shot_taken=''
  while installer_running; do
    show_progress
    shoot_in_the_middle
    if ((SECONDS > end)); then
      import -window root "${demo_shot%.png}-stuck.png"
      press Pavoline.exe dump || true
      problem "not finished after $demo_time_limit s"
      return
    fi
    sleep 0.1
  done
  show_progress
}

start_installer() {
  local switches=("/source:$1" /wimindex:2 /instpart:E: /bootpart:S: /formatinstpart /install /slient /lng:1033)
  ((demo_restart == 0)) || switches+=(/reboot)
  cd "$bench/prefix/drive_c" || exit
  wine "C:\\${bench_app//\//\\}\\Pavoline.exe" "${switches[@]}" &
  installer=$!
  [[ $demo_mode == normal ]] || { press Pavoline.exe wait 20000 && press Pavoline.exe menu "${mode_commands[$demo_mode]}"; }
}

verify_mode() {
  [[ -z ${mode_options[$demo_mode]:-} || $demo_source == gho ]] && return 0
  grep -P "^wimlib-imagex\tapply .* ${mode_options[$demo_mode]}\t" "$bench/journal" >/dev/null ||
    problem "the image was not applied with ${mode_options[$demo_mode]}"
}

prepare_demo() {
  need_packages "${demo_packages[@]}"
  local template source
  # Wine starts, the compiler calculates and the image is captured at the same time.
  make_template &
  template=$!
  bench_programs x64
  image "$demo_size" "$demo_source" >/dev/null &
  source=$!
  [[ -n ${APP:-} ]] || build_product x64
  wait "$template" || die "the template of the Wine prefix was not made"
  wait "$source" || die "the image was not made"
  bench=$bench_build/demo
  "$bench_source/bench" up "$bench"
  export PAVOLINE_BENCH=$bench WINEPREFIX=$bench/prefix
  bench_arch=x64 bench_app="Program Files/Pavoline"
  cp "$(bench_bin x64)/press.exe" "$bench/prefix/drive_c/"
  make_scene
  source_path="Windows images/install.$demo_source"
  put_source "$demo_size" "$demo_source" "$source_path"
  tree=$(image_folder "$demo_size")/edition-2
  edition=${editions[1]} language=de-DE source_copy=''
  [[ $demo_mode != wimcopy || $demo_source == esd ]] || source_copy=$(image "$demo_size" wim)
  if [[ $demo_source == gho ]]; then
    place_ghost 10531
    edition="Ghost image" language=en-US
  fi
}

end_demo() {
  "$bench_source/bench" down "$bench" 2>/dev/null || true
  stop_display
}

run_demo() {
  read_demo_options "$@"
  prepare_demo
  local kind started seconds
  kind=$(volume_kind e)
  demo_shot=$repo/build/demo-$demo_source-${demo_mode//:/-}.png
  trap end_demo EXIT
  need_display
  say_line "installing $edition from D:\\${source_path//\//\\} to E: ($kind)"
  started=$(date +%s)
  start_installer "D:\\${source_path//\//\\}"
  watch_installer
  seconds=$(($(date +%s) - started))
  [[ -n $demo_shot_taken ]] || problem "no screenshot was taken in the middle of the apply"
  verify_all "$demo_restart"
  verify_mode
  ((verify_failed == 0)) || die "demo: $verify_failed checks failed; the calls were:"$'\n'"$(cat "$bench/journal")"
  say_line "screenshot: ${demo_shot#"$repo"/}"
  say_line "demo: installed \"$edition\" on E: ($kind): $verified files verified, $seconds s"
}
