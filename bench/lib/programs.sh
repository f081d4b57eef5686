# The bench's own Windows programs, built by a CMake project of their own.

# bench_programs ARCH [TARGET...] (x64 or x86): builds when needed what every run of the bench uses, or
# these, and never where BENCH_PROGRAMS says "built"; bench_bin ARCH is where they are.
bench_bin() { echo "$bench_build/programs-$1/bin"; }

bench_programs() {
  [[ ${BENCH_PROGRAMS:-} != built ]] || return 0
  local dir=$bench_build/programs-$1
  [[ -f $dir/build.ninja ]] || cmake -S "$bench_source" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DCMAKE_TOOLCHAIN_FILE="$repo/cmake/mingw-$1.cmake" >/dev/null
  local log
  shift
  log=$(ninja -C "$dir" "$@" 2>&1) || die "$(head -n 60 <<<"$log")"
}
