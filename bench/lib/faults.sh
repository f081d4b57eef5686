# ./dev faults [PART|ROW...]: every row of bench/faults/table tried on the bench, several benches side by
# side. What is seen must be what the table says. A whole run writes docs/faults.md.
source "$bench_source/lib/build.sh"
source "$bench_source/lib/programs.sh"
source "$bench_source/lib/image.sh"
source "$bench_source/lib/props.sh"

faults_table=$bench_source/faults/table
fault_benches=${FAULT_BENCHES:-4}

# table_rows [PART|NUMBER...]: "number<TAB>row" of those asked for, of all when none is.
table_rows() {
  grep -v '^#' "$faults_table" | grep . | awk -v wanted=" $* " '
    { split($0, field, / *\| */) }
    wanted ~ /^ *$/ || index(wanted, " " field[1] " ") || index(wanted, " " NR " ") { print NR "\t" $0 }'
}

# Rows that wait for a tool that is silent for a minute are begun first, so that they end with the others.
in_order() { awk -F '\t' '{ print ($2 ~ /long;/ ? 0 : 1) "\t" $1 }' | sort -n -s -k 1,1 | cut -f 2; }

# The next number of the list, taken by one bench alone.
take_row() {
  flock "$faults_folder/lock" bash -c 'head -n 1 "$1"; sed -i 1d "$1"' take "$faults_folder/rows"
}

start_fault_bench() {
  bench=$faults_folder/bench-$1
  "$bench_source/bench" up "$bench"
  BENCH_KEEP_DISPLAY='' need_display
  mkdir -p "$bench/props"
  cp -al "$faults_folder/props/." "$bench/props/"
  cp "$(bench_bin x64)/faults.exe" "$bench/prefix/drive_c/"
}

try_rows() {
  local row
  while row=$(take_row) && [[ -n $row ]]; do
    timeout 600 "$bench_source/bench" run "$bench" 'C:\faults.exe' "$faults_table" "$faults_folder/seen-$row" "$row" \
      >>"$faults_folder/log-$row" 2>&1 ||
      echo "row $row: the runner failed" >"$faults_folder/seen-$row"
    say_line "$(cut -d '|' -f 1,2,4,5 "$faults_folder/seen-$row" | cut -c 1-150)"
  done
}

end_fault_benches() {
  local bench
  for bench in "$faults_folder"/bench-*; do
    [[ ! -f $bench/is-bench ]] || "$bench_source/bench" down "$bench" || true
  done
}

fault_bench() {
  trap '"$bench_source/bench" down "$bench" || true; stop_display' EXIT
  start_fault_bench "$1"
  try_rows
}

write_faults_page() {
  {
    cat <<'TEXT'
# Faults

Every tool of an installation failed in every way that is known, and every place that it needs taken away, on
[the bench](../bench/README.md), through the real window. Written by `./dev faults`; what must be seen stands
in `bench/faults/table`, and a run that sees something else fails. The words of the setup are those of
`bench/faults/scene.cpp` and of the tools' fault files.

"person": somebody opens the image, presses Start and answers every message with OK. "alone": `/install
/slient`, nobody is there; messages go by themselves. The seconds are those of the last run, from Start
(or the program's start) until the window was idle or the program ended; they depend on the machine.
TEXT
    awk -F '\t' '{ n = split($1, f, / *\| */)
      if (f[1] != part) { part = f[1]; printf "\n## %s\n\n| case | setup | who | what is seen | exit code | the record says | what is left | s |\n|---|---|---|---|---|---|---|---|\n", part }
      printf "| %s | `%s` | %s | %s | %s | %s | %s | %s |\n", f[2], f[3], f[4], f[5], f[6], f[7], f[8], $2 }' "$1"
    cat "$bench_source/faults/elsewhere.md"
  } >"$repo/docs/faults.md"
}

run_faults() {
  need_packages "${build_packages[@]}" "${bench_packages[@]}"
  [[ -n ${APP:-} ]] || build x64
  bench_programs x64 all faults
  faults_folder=$bench_build/faults
  [[ ! -d $faults_folder ]] || { end_fault_benches; rm -rf --one-file-system "$faults_folder"; }
  mkdir -p "$faults_folder/props"
  bench=$faults_folder make_props
  table_rows "$@" | in_order >"$faults_folder/rows"
  [[ -s $faults_folder/rows ]] || die "no such part: $*; there are: $(table_rows | cut -f 2- | cut -d ' ' -f 1 | uniq | xargs)"
  trap end_fault_benches EXIT
  local number row
  for ((number = 1; number <= fault_benches; ++number)); do fault_bench "$number" & done
  wait
  table_rows "$@" >"$faults_folder/wanted.rows"
  cut -f 2- "$faults_folder/wanted.rows" >"$faults_folder/wanted"
  cut -f 1 "$faults_folder/wanted.rows" | while read -r row; do cat "$faults_folder/seen-$row"; done >"$faults_folder/timed"
  cut -f 1 "$faults_folder/timed" >"$faults_folder/seen"
  (($# > 0)) || write_faults_page "$faults_folder/timed"
  ! grep 'FAULT:' "$faults_folder/seen" || die "what must never happen was seen"
  diff "$faults_folder/wanted" "$faults_folder/seen" || die "seen (>) is not what bench/faults/table says (<); all of it: $faults_folder/seen"
  say_line "$(wc -l <"$faults_folder/seen") faults, each ended as the table says, in $SECONDS s"
}
