# Ground of every bench script: places, messages, Debian packages, a display.
repo=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
bench_source=$repo/bench
bench_build=${PAVOLINE_BENCH_BUILD:-$repo/build/bench}
export WINEDEBUG=${WINEDEBUG:--all}
# No helper windows of Wine's own (.NET or browser offers), no menu entries on the user's desktop; and
# the bench's tools and library instead of Wine's of the same names.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;dism.exe,cacls.exe,shutdown.exe=n;version=n,b"

# Wine takes names of files in the locale's letters; a bare machine has no locale but "C".
[[ ${LC_ALL:-${LC_CTYPE:-${LANG:-}}} == *[Uu][Tt][Ff]* ]] || export LC_ALL=C.UTF-8

say_line() { printf '%s\n' "$*"; }
die() {
  printf '%s\n' "$*" >&2
  exit 1
}

# What one installation on the bench needs, and what everything does.
demo_packages=(cmake ninja-build g++-mingw-w64-x86-64-posix libgtest-dev libgmock-dev
  wine64 wine xvfb wimtools ntfs-3g xorriso imagemagick fonts-wine procps perl fdisk w3m)
bench_packages=("${demo_packages[@]}" zip qemu-utils fonts-wqy-microhei locales-all)
build_packages=(cmake ninja-build g++ g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix libgtest-dev libgmock-dev w3m)

# need_packages NAME...: installs what is missing, or says how and stops.
need_packages() {
  local name missing=() as_root=()
  for name in "$@"; do
    dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
  done
  ((${#missing[@]} > 0)) || return 0
  if ((EUID != 0)); then
    command -v sudo >/dev/null || die "Debian packages are missing. As root, run: apt-get install -y ${missing[*]}"
    as_root=(sudo)
  fi
  say_line "installing ${missing[*]}"
  local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 install -y --no-install-recommends)
  "${install[@]}" "${missing[@]}" >/dev/null 2>&1 || {
    "${as_root[@]}" apt-get update >/dev/null
    "${install[@]}" "${missing[@]}" >/dev/null || die "could not install. As root, run: apt-get install -y ${missing[*]}"
  }
}

# need_display: an X server of our own (ended by stop_display) unless KEEP_DISPLAY asks for the user's.
need_display() {
  [[ -n ${BENCH_KEEP_DISPLAY:-} && -n ${DISPLAY:-} ]] && return 0
  local reply
  reply=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "${BENCH_SCREEN:-1024x768}x24" -nolisten tcp 3>"$reply" >/dev/null 2>&1 &
  bench_xvfb=$!
  local try
  for try in {1..100}; do
    [[ -s $reply ]] && break
    sleep 0.05
  done
  [[ -s $reply ]] || die "Xvfb did not start"
  DISPLAY=:$(cat "$reply")
  export DISPLAY
  rm -f "$reply"
}

stop_display() {
  [[ -n ${bench_xvfb:-} ]] || return 0
  kill "$bench_xvfb" 2>/dev/null || true
  bench_xvfb=''
}
