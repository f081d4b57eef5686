# ./dev fuzz [SECONDS] [TARGET]: random input for every reader of outside text, the time shared out.
fuzz_build=$repo/build/fuzz
fuzz_preset=fuzz  # or native, which the tests compile anyway: as watchful, but slower
fuzz_tests=$repo/tests/fuzz
fuzz_packages=(clang libclang-rt-dev lld llvm)

# Every target has seeds, so their folders are the list.
fuzz_targets() { ls "$fuzz_tests/seeds"; }

build_fuzzer() {
  cmake --preset "$fuzz_preset" >/dev/null && cmake --build --preset "$fuzz_preset" --target pavoline_fuzz
}

# fuzzer TARGET ARGUMENT...: what is found lands in the target's folder of the build. A thread of the fuzzer's own
# that has only just begun when the program ends looks like a leak.
fuzzer() {
  local target=$1
  shift
  mkdir -p "$fuzz_build/$target/corpus"
  local -x LSAN_OPTIONS=suppressions=$fuzz_tests/no-leaks:print_suppressions=0
  PAVOLINE_FUZZ_TARGET=$target ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=2 \
    "$repo/build/$fuzz_preset/pavoline_fuzz" -rss_limit_mb=256 -timeout=10 -max_len=2048 \
    -artifact_prefix="$fuzz_build/$target/" "$@"
}

# The places where TARGET's inputs are kept.
kept_inputs() {
  local folder
  for folder in "$fuzz_tests"/{seeds,found}/"$1"; do [[ ! -d $folder ]] || echo "$folder"; done
}

# What once broke a reader breaks it no more.
try_kept_inputs() {
  local target files
  for target in $(fuzz_targets); do
    mapfile -t files < <(find -L $(kept_inputs "$target") -type f)
    fuzzer "$target" "${files[@]}" >"$fuzz_build/$target.log" 2>&1 || {
      tail -n 40 "$fuzz_build/$target.log"
      return 1
    }
  done
}

# fuzz_target TARGET SECONDS: one line of the table; false when an input was found.
fuzz_target() {
  local target=$1 log=$fuzz_build/$1.log began=$EPOCHSECONDS found=0
  fuzzer "$target" -max_total_time="$2" -print_final_stats=1 "$fuzz_build/$target/corpus" \
    $(kept_inputs "$target") >"$log" 2>&1 || found=1
  printf '%-16s %12s %8s %8s\n' "$target" "$(fuzz_stat "$log" number_of_executed_units)" \
    $((EPOCHSECONDS - began)) "$(fuzz_stat "$log" peak_rss_mb)"
  ((found)) || return 0
  if ! grep -qaE 'Test unit written|ERROR' "$log"; then
    say_line "$target was ended before its time, or did not begin: $log"
    return 1
  fi
  grep -aE 'what\(\)|ERROR|runtime error|Test unit written' "$log"
  say_line "keep the input below tests/fuzz/found/$target/; the rest stands in $log"
  return 1
}

fuzz_stat() { sed -n "s/^stat::$2: *//p" "$1"; }

# run_fuzz SECONDS TARGET...: the time shared out among them; false when an input was found.
run_fuzz() {
  local seconds=$1 target found=0 each
  shift
  mkdir -p "$fuzz_build"
  each=$((seconds / $#))
  printf '%-16s %12s %8s %8s\n' target executions seconds 'peak MB'
  for target in "$@"; do fuzz_target "$target" $((each > 0 ? each : 1)) || found=1; done
  return $found
}

fuzz() {
  local seconds=${1:-60} targets log
  [[ $seconds =~ ^[0-9]+$ ]] || die "usage: ./dev fuzz [seconds] [target]"
  mapfile -t targets < <(if [[ -n ${2:-} ]]; then echo "$2"; else fuzz_targets; fi)
  [[ -d $fuzz_tests/seeds/${targets[0]} ]] || die "targets: $(fuzz_targets | xargs)"
  need_packages "${build_packages[@]}" "${fuzz_packages[@]}"
  log=$(build_fuzzer 2>&1) || die "$(tail -n 40 <<<"$log")"
  run_fuzz "$seconds" "${targets[@]}"
}
