# ./dev test: everything that can be tried, one line of sums at the end.
source "$bench_source/lib/programs.sh"
source "$bench_source/lib/i386.sh"
source "$bench_source/lib/fuzz.sh"
source "$bench_source/lib/dist.sh"

passed=0 failed=0 test_logs=$repo/build/test-logs
declare -a failures=()
fit_job='' fit_log=''
x86_name="end to end under Wine, 32 bit" x86_job='' x86_log=''

# Seconds since the start stand before what is said.
say_line() { printf '%4d s  %s\n' "$SECONDS" "$*"; }

count() {
  passed=$((passed + $1))
  failed=$((failed + $2))
  (($2 == 0)) || failures+=("$3")
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

# run_gtest NAME COMMAND...: sums taken from GoogleTest's own last lines; a crash counts as a failure.
# What it printed stays below build/test-logs.
run_gtest() {
  local name=$1 log good bad
  shift
  log=$test_logs/${name//[ ,]/-}
  if "$@" >"$log" 2>&1; then bad=0; else bad=1; fi
  tr -d '\r' <"$log" >"$log.text"
  good=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) tests\?\..*/\1/p' "$log.text" | tail -n 1)
  if ((bad == 1)); then
    bad=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) tests\?, listed below.*/\1/p' "$log.text" | tail -n 1)
    bad=${bad:-1}
    grep -vE '^\[ +(OK|RUN) ' "$log.text" | tail -n 150
  fi
  count "${good:-0}" "$bad" "$name"
  say_line "$name: ${good:-0} of $((${good:-0} + bad)) passed"
  mv "$log.text" "$log"
}

test_native() {
  cmake --preset native >/dev/null
  cmake --build --preset native
  run_ctest "$repo/build/native" "unit tests with sanitizers"
}

test_sources() {
  check "language files" "$repo/tools/check-lang"
  check "messages in the guide" "$repo/tools/check-guide"
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
  build
  run_ctest "$repo/build/x64" "checks of the 64-bit program"
  run_ctest "$repo/build/x86" "checks of the 32-bit program"
  check "archives are the same twice" packs_the_same x64 x86
}

# The adapter against the contract that the fakes keep.
test_contract() {
  bench=$bench_build/test
  "$bench_source/bench" up "$bench"
  cp "$repo/build/x64/test_contract.exe" "$bench/prefix/drive_c/"
  run_gtest "contract under Wine" timeout 600 "$bench_source/bench" run "$bench" 'C:\test_contract.exe'
  "$bench_source/bench" down "$bench"
}

# These wait most of their time, so two benches work side by side, each with a display of its own.
test_e2e() {
  local half jobs=() logs=()
  rm -rf "$repo/build/e2e-failures"
  for half in 0 1; do
    logs+=("$(mktemp)")
    DISPLAY='' GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=$half E2E_BENCH=$bench_build/e2e-$half timeout 2400 \
      "$repo/tests/e2e/run" "$repo/build/x64/app" "$(bench_bin x64)/test_e2e.exe" "$@" >"${logs[half]}" 2>&1 &
    jobs+=($!)
  done
  for half in 0 1; do
    run_gtest "end to end under Wine, half $((half + 1)) of 2" finish_job "${jobs[half]}" "${logs[half]}"
  done
}

# finish_job PROCESS LOG: what it said and how it ended.
finish_job() {
  local result=0
  wait "$1" || result=$?
  cat "$2"
  rm -f "$2"
  return $result
}

# The 32-bit programs, where this machine can make a 32-bit Wine: installations from a WIM and from an
# ISO, one whose imaging program dies, those that are refused, and the lister.
begin_x86() {
  local reason
  reason=$(cat <&"$i386_reply")
  [[ -z $reason ]] || { say_line "$x86_name: left out, for want of a 32-bit Wine: $reason"; return; }
  bench_programs x86 all test_e2e
  local tests=(Installing.{UnattendedWithEveryOptionalStep,FromPathsThatScriptsTripOver,ImagingProgramKilledWhileItWrites}
    Refusing.UnattendedRunsEndThemselves Listing.IsWhatThePartitionTablesSay)
  x86_log=$(mktemp)
  timeout --kill-after=10 600 "$bench_source/bench" i386 "$repo/tests/e2e/run" "$repo/build/x86/app" \
    "$(bench_bin x86)/test_e2e.exe" --gtest_filter="$(IFS=:; echo "${tests[*]}")" >"$x86_log" 2>&1 &
  x86_job=$!
}

end_x86() { [[ -z $x86_job ]] || run_gtest "$x86_name" finish_job "$x86_job" "$x86_log"; }

test_fuzz() {
  check "a minute of random input" run_fuzz 60
  check "inputs that once broke something" try_kept_inputs
}

# What waits most of its time goes on beside the rest, on a bench and a display of its own.
test_under_wine() {
  fit_log=$(mktemp)
  cmake --build --preset x64 --target app test_fit test_contract
  bench_programs x64 all test_e2e shoot
  DISPLAY='' BUILD=$repo/build/x64 "$repo/tests/fit/run" >"$fit_log" 2>&1 &
  fit_job=$!
  need_display
  trap stop_display EXIT
  test_contract
  test_e2e "$@"
}

# The tests under Wine wait most of their time: what is left to build takes the processors meanwhile,
# and gives them back whenever a test wants them.
build_behind() {
  renice -n 19 "$BASHPID" >/dev/null
  build_product x86
  build_product native
}

run_tests() {
  need_packages "${build_packages[@]}" "${bench_packages[@]}"
  export GTEST_COLOR=no
  rm -rf "$test_logs" && mkdir -p "$test_logs"
  exec {i386_reply}< <(make_i386)  # while the compilers run
  local behind
  build_product x64
  build_behind >/dev/null 2>&1 &
  behind=$!
  test_under_wine "$@"
  wait "$behind" || true  # what did not build is said below, where it is built again
  begin_x86
  test_native
  test_fuzz
  test_sources
  test_products
  check "texts fit their places" finish_job "$fit_job" "$fit_log"
  end_x86
  ((failed == 0)) || printf 'failed: %s\n' "${failures[@]}"
  printf '%s passed, %s failed\n' "$passed" "$failed"
  ((failed == 0))
}
