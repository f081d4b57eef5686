# ./dev test: everything that can be tried, one line of sums at the end. Its parts go on side by side: those under
# Wine wait most of their time, and what is left to compile takes the processors meanwhile.
source "$bench_source/lib/build.sh"
source "$bench_source/lib/programs.sh"
source "$bench_source/lib/prefix.sh"
source "$bench_source/lib/i386.sh"
source "$bench_source/lib/fuzz.sh"
source "$bench_source/lib/dist.sh"

test_logs=$repo/build/test-logs
test_counts=$test_logs/counts
e2e_benches=4
fit_benches=3
declare -a parts=()

# Seconds since the start stand before what is said.
say_line() { printf '%4d s  %s\n' "$SECONDS" "$*"; }

# count PASSED FAILED NAME: into a file, which the parts share.
count() { printf '%s %s %s\n' "$@" >>"$test_counts"; }

# part NAME COMMAND...: begins something that goes on beside the rest; $! is its process.
part() {
  run_part "$@" </dev/null &
  parts+=($!)
}

# What it said comes in one piece when it has ended. One that breaks off has failed, whatever it counted before.
run_part() {
  local name=$1 log=$test_logs/$1.part result=0
  shift
  "$@" >"$log" 2>&1 &
  wait $! || result=$?
  ((result == 0)) || count 0 1 "$name (broke off)"
  flock "$test_logs" cat "$log"
  return $result
}

# Whoever breaks off the tests ends what still goes on.
end_descendants() {
  ps -e -o pid= -o ppid= | awk -v top=$$ '{ parent[$1] = $2 }
    END { for (p in parent) { for (q = p; q in parent && q != top; q = parent[q]); if (q == top && p != top) print p } }' |
    xargs -r kill 2>/dev/null || true
}

# behind NICENESS COMMAND...: gives the processors back whenever somebody else wants them.
behind() {
  renice -n $(($(nice) + $1)) "$BASHPID" >/dev/null
  export CMAKE_BUILD_PARALLEL_LEVEL=2
  shift
  "$@"
}

# check NAME COMMAND...: one test that is a command.
check() {
  local name=$1
  shift
  if "$@"; then count 1 0 "$name"; else count 0 1 "$name"; fi
  say_line "checked: $name"
}

# run_ctest DIRECTORY NAME: sums taken from ctest's own last lines.
run_ctest() {
  local log wrong total
  log=$(mktemp)
  ctest --test-dir "$1" --output-on-failure -j2 >"$log" 2>&1 || true
  read -r wrong total < <(sed -n 's/.*, \([0-9]*\) tests failed out of \([0-9]*\)/\1 \2/p' "$log") || true
  if [[ -z ${total:-} ]]; then
    tail -n 40 "$log"
    count 0 1 "$2 (no summary)"
  else
    ((wrong == 0)) || grep -v ' Passed ' "$log" | tail -n 150
    count $((total - wrong)) "$wrong" "$2"
    say_line "$2: $((total - wrong)) of $total passed"
  fi
  rm -f "$log"
}

# run_gtest NAME COMMAND...: sums taken from GoogleTest's own last lines; without them it has failed.
# What it printed stays below build/test-logs.
run_gtest() {
  local name=$1 log good bad
  shift
  log=$test_logs/${name//[ ,]/-}
  if "$@" >"$log" 2>&1; then bad=0; else bad=1; fi
  tr -d '\r' <"$log" >"$log.text"
  good=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\?\..*/\1/p' "$log.text" | tail -n 1)
  [[ -n $good ]] || bad=1  # it ended before its sums
  if ((bad == 1)); then
    bad=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) tests\?, listed below.*/\1/p' "$log.text" | tail -n 1)
    bad=${bad:-1}
    grep -vE '^\[ +(OK|RUN) ' "$log.text" | tail -n 150 || true
  fi
  count "${good:-0}" "$bad" "$name"
  say_line "$name: ${good:-0} of $((${good:-0} + bad)) passed"
  mv "$log.text" "$log"
}

# Says nothing but why it failed.
quietly() {
  local log
  log=$(mktemp "$test_logs/build.XXXX")
  "$@" >"$log" 2>&1 || { tail -n 60 "$log"; return 1; }
}

# The fuzzer is made of the same objects; its minute, which takes one processor alone, begins as soon as it can.
test_native() {
  local program programs fuzz
  fuzz_preset=native
  quietly build_fuzzer
  test_fuzz &
  fuzz=$!
  quietly build_product native
  mapfile -t programs < <(find "$repo/build/native" -maxdepth 1 -name 'test_*' -type f -executable | sort)
  ((${#programs[@]} > 0)) || die "there are no unit tests"
  for program in "${programs[@]}"; do
    run_gtest "unit tests with sanitizers, $(basename "$program")" timeout 600 "$program"
  done
  wait "$fuzz"
}

test_fuzz() {
  local targets
  mapfile -t targets < <(fuzz_targets)
  check "a minute of random input" run_fuzz 60 "${targets[@]}"
  check "inputs that once broke something" try_kept_inputs
}

test_sources() {
  check "language files" "$repo/tools/check-lang"
  check "messages in the guide" "$repo/tools/check-guide"
  check "includes keep to the layout" "$repo/tools/check-headers"
  check "scripts parse" check_scripts
}

check_scripts() {
  local script
  for script in "$repo"/dev "$bench_source"/bench "$bench_source"/lib/*.sh "$bench_source"/tools/*.sh \
    "$bench_source"/tools/{run-tool,ghost-restore}; do
    bash -n "$script" || return 1
  done
}

test_products() {
  run_ctest "$repo/build/x64" "checks of the 64-bit program"
  run_ctest "$repo/build/x86" "checks of the 32-bit program"
  check "archives are the same twice" packs_the_same x64 x86
}

# The adapter against the contract that the fakes keep.
test_contract() {
  bench=$bench_build/test
  need_display
  trap stop_display EXIT
  "$bench_source/bench" up "$bench"
  cp "$repo/build/x64/test_contract.exe" "$bench/prefix/drive_c/"
  run_gtest "contract under Wine" timeout 600 "$bench_source/bench" run "$bench" 'C:\test_contract.exe'
  "$bench_source/bench" down "$bench"
}

# test_e2e NUMBER OPTION...: one of the benches, each with a display of its own.
test_e2e() {
  local number=$1
  shift
  GTEST_TOTAL_SHARDS=$e2e_benches GTEST_SHARD_INDEX=$((number - 1)) E2E_BENCH=$bench_build/e2e-$number \
    run_gtest "end to end under Wine, bench $number of $e2e_benches" timeout 2400 \
    "$repo/tests/e2e/run" "$repo/build/x64/app" "$repo/build/x64/test_e2e.exe" "$@"
}

# test_fit NUMBER: a share of the languages, on a bench and a display of its own.
test_fit() {
  local number=$1 language languages=() place=0
  for language in "$repo"/lang/*.lng; do
    ((place++ % fit_benches == number - 1)) || continue
    languages+=("$(basename "$language" .lng)")
  done
  BUILD=$repo/build/x64 FIT_BENCH=fit-$number FIT_QUICK=yes check "texts fit their places: ${languages[*]}" \
    "$repo/tests/fit/run" "${languages[@]}"
}

build_x86() {
  quietly build_product x86
  quietly cmake --build --preset x86 --target test_e2e
  bench_programs x86
}

# The 32-bit programs, where this machine can make a 32-bit Wine: installations from a WIM and from an
# ISO, one whose imaging program dies, those that are refused, and the lister.
test_x86() {
  local name="end to end under Wine, 32 bit" reason
  reason=$(cat <&"$i386_reply")
  [[ -z $reason ]] || { say_line "$name: left out, for want of a 32-bit Wine: $reason"; return; }
  local tests=(Installing.{UnattendedWithEveryOptionalStep,FromPathsThatScriptsTripOver,ImagingProgramKilledWhileItWrites}
    Refusing.AnUnattendedRunEndsItself Listing.IsWhatThePartitionTablesSay)
  run_gtest "$name" timeout --kill-after=10 600 "$bench_source/bench" i386 "$repo/tests/e2e/run" "$repo/build/x86/app" \
    "$repo/build/x86/test_e2e.exe" --gtest_filter="$(IFS=:; echo "${tests[*]}")"
}

# What the tests of the 64-bit program need comes first; they begin as soon as they can.
run_parts() {
  local number x86
  part native behind 10 test_native
  part build-x86 behind 1 build_x86  # tests of its own wait for it
  x86=$!
  make_template >"$test_logs/template" 2>&1 &  # should it fail, the first bench tries again
  build_product x64
  cmake --build --preset x64 --target test_e2e
  bench_programs x64 all shoot
  export BENCH_PROGRAMS=built DISPLAY=''
  for ((number = 1; number <= e2e_benches; ++number)); do part "e2e-$number" test_e2e "$number" "$@"; done
  cmake --build --preset x64 --target test_fit test_contract
  for ((number = 1; number <= fit_benches; ++number)); do part "fit-$number" test_fit "$number"; done
  part contract test_contract
  test_sources
  if wait "$x86"; then
    part x86 test_x86
    part products test_products
  fi
  wait "${parts[@]}" || true  # they have counted what failed
}

# The sums of all that was counted; false when something failed.
sum_up() {
  awk '{ passed += $1; failed += $2 }
    $2 > 0 { sub(/^[0-9]+ [0-9]+ /, ""); print "failed: " $0 }
    END { printf "%d passed, %d failed\n", passed, failed; exit failed > 0 }' "$test_counts"
}

run_tests() {
  need_packages "${build_packages[@]}" "${bench_packages[@]}" "${fuzz_packages[@]}"
  export GTEST_COLOR=no
  rm -rf "$test_logs" "$repo/build/e2e-failures"
  mkdir -p "$test_logs"
  : >"$test_counts"
  exec {i386_reply}< <(behind 1 make_i386)
  trap end_descendants EXIT
  run_parts "$@"
  trap - EXIT
  sum_up
}
