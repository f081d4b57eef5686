# ./dev run: the window on the bench, on the user's own display, with a source to choose.
source "$bench_source/lib/build.sh"
source "$bench_source/lib/programs.sh"
source "$bench_source/lib/prefix.sh"
source "$bench_source/lib/disks.sh"
source "$bench_source/lib/image.sh"
source "$bench_source/lib/scene.sh"

run_window() {
  need_packages "${build_packages[@]}" "${bench_packages[@]}"
  [[ -n ${DISPLAY:-} ]] || die "no display: DISPLAY is not set (under Xvfb, ./dev shots shows every window)"
  build
  bench=$bench_build/run bench_arch=x64 bench_app="Program Files/Pavoline"
  "$bench_source/bench" up "$bench"
  trap '"$bench_source/bench" down "$bench"' EXIT
  make_scene
  put_source 300 wim Sources/install.wim
  put_source 300 iso Sources/windows.iso
  say_line "sources: D:\\Sources\\install.wim and windows.iso; boot partition S:, install partition E: ($(volume_kind e))"
  "$bench_source/bench" run "$bench" 'C:\Program Files\Pavoline\Pavoline.exe' "$@"
}
