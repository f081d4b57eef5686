# ./dev shots: pictures of every window in every language, and a sheet of them per language.
source "$bench_source/lib/build.sh"
source "$bench_source/lib/programs.sh"
source "$bench_source/lib/prefix.sh"
source "$bench_source/lib/disks.sh"
source "$bench_source/lib/image.sh"
source "$bench_source/lib/scene.sh"

shot_languages=("$repo"/lang/*.lng)
shot_languages=("${shot_languages[@]##*/}")
shot_languages=("${shot_languages[@]%.lng}")
shot_small_screen=800x600

# language_option LANGUAGE KEY DEFAULT: what the language's file says under [Option].
language_option() {
  local value
  value=$(sed -n "/^\[Option\]\$/,/^\[/s/^$2=//p" "$repo/lang/$1.lng")
  printf '%s\n' "${value:-$3}"
}

# speak LANGUAGE: as a system of that language, whose locale gives Wine the code page. The process
# that calls this speaks nothing else any more.
speak() {
  LC_ALL=$(language_option "$1" Locale en_US.UTF-8)
  export LC_ALL
  keep_wine
  link_fonts
  wine 'C:\shoot.exe' font "$(language_option "$1" font Tahoma)" ||
    die "the bench has no font that $1.lng names"
}

# What the search finds and the Tools menu lists, besides the scene.
make_shot_scene() {
  local file app
  export BENCH_NTFS=no
  make_scene
  put_source 40 wim iso/install.wim
  mkdir -p "$bench/volumes/d/esd" "$bench/volumes/d/wim"
  for file in "esd/Windows 11 Education.esd" wim/install.wim iso/Windows-10-22H2.iso; do
    truncate -s $((4700 * 1024 * 1024 + 41)) "$bench/volumes/d/$file"
  done
  app=$(app_folder)
  place_ghost 10532
  for file in "$app/../Brantor/Brantor.exe" "$app/../Quillet/Quillet.exe" "$app/../DiskGenius/DiskGenius.exe"; do
    mkdir -p "$(dirname "$file")"
    cp "$bench/companion.exe" "$file"
  done
  "$bench_source/bench" disk "$bench" 1 1T "Samsung SSD 970 EVO Plus" </dev/null
  mkdir -p "$bench/faults"
  echo "pace 60" >"$bench/faults/wimlib-imagex"
}

# shoot_language LANGUAGE SUFFIX PART...
shoot_language() {
  local language=$1 suffix=$2 folder=$shots_folder/$1 result=0
  shift 2
  mkdir -p "$folder"
  (
    cd "$bench/prefix/drive_c"
    speak "$language"
    wine "C:\\${bench_app//\//\\}\\Pavoline.exe" "/lng:$language" '/source:D:\iso\install.wim' /wimindex:2 2>/dev/null &
    wine 'C:\shoot.exe' Pavoline.exe "$folder" "$suffix" "$@"
  ) || result=$?
  # A wineserver keeps the language it was started in.
  end_wine
  return $result
}

# The Tahoma of the bench lacks the arrow of the button "More"; Windows has it. Wine makes the links
# anew when the language changes.
link_fonts() {
  wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' /v Tahoma /t REG_MULTI_SZ \
    /d 'wqy-microhei.ttc,WenQuanYi Micro Hei' /f >/dev/null 2>&1
}

set_dpi() {
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1
  end_wine
}

# set_screen WIDTHxHEIGHT: of the desktop that programs started later stand in.
set_screen() {
  set_registry 'HKCU\Software\Wine\Explorer\Desktops' shell "$1"
  end_wine
}

make_sheet() {
  local folder=$shots_folder/$1
  montage -font /usr/share/fonts/truetype/wqy/wqy-microhei.ttc -label '%t' "$folder"/[a-z]*[a-z].png -geometry '920x>+8+8' -tile 2x "$shots_folder/sheet-$1.png"
}

prepare_shots() {
  need_packages "${build_packages[@]}" "${bench_packages[@]}"
  [[ -n ${APP:-} ]] || build
  bench_programs x64 all shoot
  bench=$bench_build/${shots_run:-shots} bench_arch=x64 bench_app="Program Files/Pavoline"
  "$bench_source/bench" up "$bench"
  export PAVOLINE_BENCH=$bench WINEPREFIX=$bench/prefix
  cp "$(bench_bin x64)/shoot.exe" "$bench/prefix/drive_c/"
  make_shot_scene
  export BENCH_SCREEN=1600x1000
  need_display
  set_screen "$BENCH_SCREEN"
}

end_shots() {
  "$bench_source/bench" down "$bench" 2>/dev/null || true
  stop_display
}

# take_shots [LANGUAGE...]: all languages when none is given.
take_shots() {
  local language dpi failed=0
  (($# == 0)) || shot_languages=("$@")
  shots_folder=$repo/build/shots
  trap end_shots EXIT
  prepare_shots
  set_dpi 96
  for language in "${shot_languages[@]}"; do
    rm -rf "${shots_folder:?}/$language"
    shoot_language "$language" '' main small installation || failed=1
    make_sheet "$language"
    say_line "shots: build/shots/sheet-$language.png"
  done
  set_dpi 144
  for language in "${shot_languages[@]}"; do
    shoot_language "$language" -144 main || failed=1
  done
  set_screen "$shot_small_screen"
  for dpi in 96 144 192; do
    set_dpi "$dpi"
    for language in "${shot_languages[@]}"; do
      shoot_language "$language" "-$shot_small_screen-$dpi" main || failed=1
    done
  done
  ((failed == 0)) || die "shots: some windows did not show"
  say_line "shots: $(find "$shots_folder" -name '*.png' | wc -l) pictures in build/shots"
}
