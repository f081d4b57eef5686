# ./dev bench [NAME...]: figures, each a ratio or a count from one run, with the command that repeats it.
source "$bench_source/lib/build.sh"
source "$bench_source/lib/programs.sh"
source "$bench_source/lib/prefix.sh"
source "$bench_source/lib/disks.sh"
source "$bench_source/lib/image.sh"
source "$bench_source/lib/scene.sh"

figure_names=(size install large startup iso core search)
figure_megabytes=300
installer_path='C:\Program Files\Pavoline\Pavoline.exe'

figure() { say_line "$1  [repeat: ./dev bench $figure_name]"; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }
seconds() { awk -v ms="$1" 'BEGIN { printf "%.1f", ms / 1000 }'; }
now_ms() { local t=${EPOCHREALTIME/./}; echo $((t / 1000)); }

on_bench() { (cd "$bench/prefix/drive_c" && wine "$@" | tr -d '\r'); }

# Of numbers: the one in the middle, and the smallest and largest as a measure of the noise.
middle() { printf '%s\n' "$@" | sort -n | sed -n "$((($# + 1) / 2))p"; }
noise() { printf '%s\n' "$@" | sort -n | sed -n '1p;$p' | paste -sd - | sed 's/-/ to /'; }

write_batch() {
  local name=$1
  shift
  printf '%s\r\n' '@echo off' "$@" >"$bench/prefix/drive_c/$name"
}

# ---- size

figure_size() {
  local arch
  for arch in x64 x86; do
    figure "size of build/$arch/Pavoline.exe: $(awk -v b="$(stat -c %s "$repo/build/$arch/Pavoline.exe")" \
      'BEGIN { printf "%.2f MB", b / 1048576 }') (aim: under 1.5 MB)"
  done
}

# ---- install: wall time, timer ticks, processor time and memory of the program

# Nanoseconds of processor time of all threads of a process so far.
processor_time() { cat "/proc/$1"/task/*/schedstat 2>/dev/null | awk '{ sum += $1 } END { printf "%d", sum }'; }

declare -A reached cpu_at
# Notes when each tool's journal line appears and how much processor time the installer had used then.
follow_journal() {
  local process=$1 lines=() seen=0 key
  while kill -0 "$process" 2>/dev/null; do
    mapfile -t lines <"$bench/journal"
    for (( ; seen < ${#lines[@]}; ++seen)); do
      key=${lines[seen]%%$'\t'*}
      [[ $key != wimlib-imagex || ${lines[seen]} != *$'\t'apply* ]] || key=apply
      [[ -n ${reached[$key]:-} ]] && continue
      reached[$key]=$(now_ms)
      cpu_at[$key]=$(processor_time "$process")
    done
    # The lister writes no journal; its list is there until it is read.
    [[ ! -f $bench/prefix/drive_c/windows/temp/GetPart.log ]] || reached[cxdir]=$(now_ms)
    memory=$(awk '/VmHWM/ { print $2 }' "/proc/$process/status" 2>/dev/null || true)
    [[ -z $memory ]] || memory_peak=$memory
    sleep 0.01
  done
}

bare_lines() {
  local tools='"C:\Program Files\Pavoline"\Bin'
  bare_short=("C:\\windows\\System32\\format.com E: /FS:NTFS /v:OldWindows /q /x /y"
    "$tools\\wimlib-imagex\\x64\\wimlib-imagex.exe apply D:\\Sources\\install.wim 2 E:\\  >C:\\windows\\temp\\bare.xml")
  bare_all=("$tools\\CxDir\\x64\\CxDir.exe -vaskor >C:\\windows\\temp\\bare.log"
    "$tools\\wimlib-imagex\\x64\\wimlib-imagex.exe info --xml D:\\Sources\\install.wim >C:\\windows\\temp\\bare.log"
    "$tools\\CxDir\\x64\\CxDir.exe -vaskor >C:\\windows\\temp\\bare.log" "${bare_short[@]}"
    "$tools\\Boot\\x64\\bcdboot.exe E:\\Windows /s S: /f bios /l de-DE"
    "$tools\\Boot\\x64\\bcdboot.exe E:\\Windows /s S: /f uefi /l de-DE"
    "$tools\\Boot\\x64\\bootsect.exe /nt60 S: /mbr")
}

# The tools' own words come before the number.
time_batch() { on_bench 'C:\measure.exe' lines "C:\\$1" | tail -n 1; }

# The same while the journal is followed as for the program: on an idle machine the following alone
# keeps the processors awake and halves the time of an apply through ntfs-3g.
time_followed() {
  local result
  result=$(mktemp)
  time_batch "$1" >"$result" &
  follow_journal $!
  cat "$result"
  rm -f "$result"
}

# Sets whole and the other arrays' next entry, all in milliseconds; share is in nanoseconds per second.
install_once() {
  local start installer
  reached=() cpu_at=()
  : >"$bench/journal"
  start=$(now_ms)
  (cd "$bench/prefix/drive_c" && exec wine "$installer_path" '/source:D:\Sources\install.wim' /wimindex:2 \
    /instpart:E: /bootpart:S: /formatinstpart /install /slient) &
  installer=$!
  follow_journal "$installer"
  whole+=($(($(now_ms) - start)))
  [[ -n ${reached[bootsect]:-} ]] || die "the installation did not get to its end"
  before+=($((reached[cxdir] - reached[wimlib-imagex])))
  after+=($((reached[bcdboot] - reached[apply])))
  busy+=($(((cpu_at[apply] - cpu_at[format]) / 1000)))
  apply+=($((reached[apply] - reached[format])))
  share+=($(((cpu_at[apply] - cpu_at[format]) / (reached[apply] - reached[format]))))
}

figure_install() {
  local run memory='' memory_peak=0 short all bare=() every=() whole=() before=() after=() busy=() apply=() share=()
  put_source "$figure_megabytes" wim Sources/install.wim
  printf '%s\r\n' '[Option]' TitleLng=1 BootRepair=0 >"$(app_folder)/Pavoline.ini"
  bare_lines
  write_batch bare.bat "${bare_short[@]}"
  write_batch all.bat "${bare_all[@]}"
  for run in 1 2 3; do
    bare+=("$(time_followed bare.bat)")
    every+=("$(time_followed all.bat)")
    install_once
  done
  local total ticks=$(($(middle "${before[@]}") + $(middle "${after[@]}")))
  total=$(middle "${whole[@]}") short=$(middle "${bare[@]}") all=$(middle "${every[@]}")
  figure "whole unattended installation over its bare commands (format + apply): $(ratio "$total" "$short") ($(seconds "$total") s over $(seconds "$short") s, $figure_megabytes MB; medians of 3, $(noise "${whole[@]}") over $(noise "${bare[@]}") ms)"
  figure "  of it in timer ticks: $(seconds "$(middle "${before[@]}")") s from the editions read to the partitions checked (auto-start tick), $(seconds "$(middle "${after[@]}")") s from the apply's end to the first boot file (monitor ticks)"
  figure "  without these ticks, over all the commands it runs: $(ratio $((total - ticks)) "$all") (the commands alone: $(seconds "$all") s)"
  figure "processor time of the program over the apply's wall time: $(awk -v s="$(middle "${share[@]}")" -v c="$(middle "${busy[@]}")" -v w="$(middle "${apply[@]}")" \
    'BEGIN { printf "%.2f %% (%.0f ms of %.1f s)", s / 1e4, c / 1e3, w / 1000 }') (aim: under 0.5 %)"
  figure "peak memory of the process during the installation: $((memory_peak / 1024)) MiB resident; an empty window on this Wine: $(empty_window_memory) MiB (aim: under 20 MB of its own)"
}

# The same on an image as large as a real one begins to be.
figure_large() {
  local figure_megabytes=1024
  figure_install
}

empty_window_memory() { with_desktop own_memory; }
own_memory() { awk '/VmHWM/ { print int($2 / 1024) }' "/proc/$keeper/status"; }

# ---- startup and iso: what a person waits for

# An empty window that stays keeps Wine's desktop up, whose own start is no matter of the program's.
with_desktop() {
  local keeper
  (cd "$bench/prefix/drive_c" && exec wine 'C:\measure.exe' empty) >/dev/null 2>&1 &
  keeper=$!
  sleep 3
  "$@"
  kill "$keeper" 2>/dev/null || true
  wait "$keeper" 2>/dev/null || true
}

# The tools come three ways: from one batch file; each from a hidden one of its own, which brings a
# command interpreter and a console, as the program starts them; and from the program.
time_consoles() { on_bench 'C:\measure.exe' consoles "$@" | tail -n 1; }

figure_startup() { with_desktop time_startup; }
figure_iso() { with_desktop time_iso; }

time_startup() {
  local run shown all program=() bare=() window=() consoles=()
  put_source "$figure_megabytes" wim Sources/install.wim
  bare_lines
  write_batch lists.bat "${bare_all[0]}" "${bare_all[1]}"
  write_batch list1.bat "${bare_all[0]}"
  write_batch list2.bat "${bare_all[1]}"
  for run in 1 2 3 4 5 6 7; do
    program+=("$(on_bench 'C:\measure.exe' startup "$installer_path" 'D:\Sources\install.wim')")
    bare+=("$(time_batch lists.bat)")
    consoles+=("$(time_consoles 'C:\list1.bat' 'C:\list2.bat')")
    window+=("$(on_bench 'C:\measure.exe' window)")
  done
  shown=$(middle "${window[@]}") all=$(middle "${program[@]}")
  figure "start of the process to lists filled, over the same tools run bare and an empty window: $(ratio "$all" $(($(middle "${bare[@]}") + shown))) ($all ms over $(middle "${bare[@]}") ms + $shown ms; medians of 7, $(noise "${program[@]}") over $(noise "${bare[@]}") + $(noise "${window[@]}"))"
  figure "  over the tools each from a batch file and a console of its own, as the program must start them: $(ratio "$all" $(($(middle "${consoles[@]}") + shown))) ($(middle "${consoles[@]}") ms + $shown ms)"
  trace_startup
}

# Of the last start, part by part: what the program noted, and how long after what it noted before.
trace_startup() {
  say_line "  where the time of one start goes, by the program's own record:"
  tr -d '\r' <"$bench/prefix/drive_c/windows/temp/Pavoline.log" | awk '
    { split($2, t, /[:.]/); now = ((t[1] * 60 + t[2]) * 60 + t[3]) * 1000 + t[4] }
    / started: / { count = 0 }
    { text = substr($0, 26); line[++count] = sprintf("    %5d ms  %s", count > 1 ? now - before : 0, substr(text, 1, 90)); before = now }
    END { for (i = 1; i <= count; ++i) print line[i] }'
}

# The program leaves without waiting for its last dismounting, and the next ISO is to get the same letter.
wait_dismounted() {
  local try
  for try in {1..100}; do
    [[ -e $bench/prefix/dosdevices/f: ]] || return 0
    sleep 0.1
  done
  die "F: was not dismounted"
}

time_iso() {
  local run all program=() bare=() consoles=()
  put_source "$figure_megabytes" iso Sources/windows.iso
  write_batch iso1.bat 'imdisk.exe -a -m #: -f D:\Sources\windows.iso >C:\windows\temp\bare.log'
  write_batch iso2.bat \
    '"C:\Program Files\Pavoline"\Bin\wimlib-imagex\x64\wimlib-imagex.exe info --xml F:\sources\install.wim >C:\windows\temp\bare.log'
  write_batch iso.bat 'call C:\iso1.bat' 'call C:\iso2.bat'
  write_batch dismount.bat 'imdisk.exe -D -m F:'
  for run in 1 2 3 4 5 6 7; do
    program+=("$(on_bench 'C:\measure.exe' source "$installer_path" 'D:\Sources\windows.iso')")
    wait_dismounted
    bare+=("$(time_batch iso.bat)")
    time_batch dismount.bat >/dev/null
    wait_dismounted
    consoles+=("$(time_consoles 'C:\iso1.bat' 'C:\iso2.bat')")
    time_batch dismount.bat >/dev/null
    wait_dismounted
  done
  all=$(middle "${program[@]}")
  figure "ISO source to editions listed, over mounting and reading it with the bare tools: $(ratio "$all" "$(middle "${bare[@]}")") ($all ms over $(middle "${bare[@]}") ms; medians of 7, $(noise "${program[@]}") over $(noise "${bare[@]}"))"
  figure "  over the tools each from a batch file and a console of its own: $(ratio "$all" "$(middle "${consoles[@]}")") ($(middle "${consoles[@]}") ms)"
}

# ---- core and search: the program's own work

place_core_figures() {
  [[ -n ${APP:-} ]] || cmake --build --preset x64 --target core_figures >/dev/null
  cp "${APP:-$repo/build/x64/app}/../core_figures.exe" "$bench/prefix/drive_c/"
}

print_core() {
  local line
  while IFS= read -r line; do figure "$line"; done < <(on_bench 'C:\core_figures.exe' "$1")
}

figure_core() {
  local keeper
  place_core_figures
  print_core images
  # The monitor asks whether the tool still runs.
  cp "$bench/companion.exe" "$bench/prefix/drive_c/wimlib-imagex.exe"
  (cd "$bench/prefix/drive_c" && exec wine 'C:\wimlib-imagex.exe' -wait 600000) &
  keeper=$!
  sleep 1
  print_core ticks
  kill "$keeper" 2>/dev/null || true
  wait "$keeper" 2>/dev/null || true
}

# 10 x 10 x 10 folders; 899 files in each of the second level and 9 in each of the third, and an
# image of more than 400 MiB in each of the first.
make_search_tree() {
  perl -e '
    sub fill { my ($folder, $count) = @_; for my $n (1 .. $count) { open(my $f, ">", "$folder/file $n.dat") } }
    for my $i (0 .. 9) { mkdir "$ARGV[0]/f$i"; for my $j (0 .. 9) { mkdir "$ARGV[0]/f$i/f$j"; fill("$ARGV[0]/f$i/f$j", 899);
      for my $k (0 .. 9) { mkdir "$ARGV[0]/f$i/f$j/f$k"; fill("$ARGV[0]/f$i/f$j/f$k", 9) } }
      open(my $f, ">", "$ARGV[0]/f$i/image.wim"); truncate $f, 500 * 1048576 }' "$1"
}

figure_search() {
  place_core_figures
  find "$bench/volumes/d" -mindepth 1 -delete
  make_search_tree "$bench/volumes/d"
  print_core search
  find "$bench/volumes/d" -mindepth 1 -delete
}

print_figures() {
  local figure_name
  (($# > 0)) || set -- "${figure_names[@]}"
  need_packages "${build_packages[@]}" "${bench_packages[@]}"
  [[ -n ${APP:-} ]] || build
  bench_programs x64 all measure
  bench=$bench_build/figures bench_arch=x64 bench_app="Program Files/Pavoline"
  "$bench_source/bench" up "$bench"
  export PAVOLINE_BENCH=$bench WINEPREFIX=$bench/prefix
  trap '"$bench_source/bench" down "$bench"; stop_display' EXIT
  need_display
  cp "$(bench_bin x64)/measure.exe" "$bench/prefix/drive_c/"
  say_line "load of this machine: $(cut -d ' ' -f 1-3 /proc/loadavg) on $(nproc) processors"
  for figure_name in "$@"; do
    declare -F "figure_$figure_name" >/dev/null || die "no figure $figure_name; there are ${figure_names[*]}"
    "figure_$figure_name"
  done
}
