# A Wine prefix per run, as links onto one template; only the registry and what Wine writes are copies.

bench_template=$bench_build/template-${ARCH:-x64}

set_registry() { wine reg add "$1" /v "$2" /d "$3" /f >/dev/null 2>&1; }

# The server of the prefix stays until it is ended: one that ends by itself when it is idle may take its folder away
# just when the next program looks for it.
keep_wine() { wineserver -p </dev/null >/dev/null 2>&1; }
end_wine() {
  wineserver -k 2>/dev/null || true
  wineserver -w || true
}

# One makes it, whoever comes meanwhile waits.
make_template() {
  mkdir -p "$bench_build"
  (
    flock 9
    [[ -f $bench_template/complete ]] && grep -qs 'Services\\\\BenchDisk' "$bench_template/system.reg" ||
      make_template_anew 9>&-
  ) 9>"$bench_template.lock"
}

make_template_anew() {
  rm -rf "$bench_template"
  mkdir -p "$bench_template"
  say_line "making the template of the Wine prefix (once)"
  local WINEPREFIX=$bench_template DISPLAY=''
  export WINEPREFIX DISPLAY
  wineboot -i >/dev/null 2>&1
  wineserver -w
  cp /usr/share/wine/fonts/*.ttf "$bench_template/drive_c/windows/Fonts/"
  keep_wine
  # Every program stands in one desktop of this name, which Wine gives a taskbar.
  set_registry 'HKCU\Software\Wine\Explorer' Desktop shell
  set_registry 'HKCU\Software\Wine\Explorer\Desktops' shell "${BENCH_SCREEN:-1024x768}"
  # The mount manager's own group: both are loaded into one process, where they find each other.
  wine sc create BenchDisk type= kernel start= auto group= "System Bus Extender" \
    binPath= 'C:\windows\system32\drivers\benchdisk.sys' >/dev/null 2>&1
  end_wine
  find "$bench_template/dosdevices" -type l ! -name c: -delete
  touch "$bench_template/complete"
}

# place_bridge NAME FOLDER...: the bridge under a tool's name, beside nothing else.
place_bridge() {
  local name=$1 folder
  shift
  for folder in "$@"; do
    mkdir -p "$folder"
    ln -f "$bench/bridge.exe" "$folder/$name"
  done
}

place_disk_programs() {
  cp "$(bench_bin "$bench_arch")/benchdisk.sys" "$1/drivers/"
  ln -s "$bench/disks/table" "$1/drivers/benchdisk.txt"
  rm -f "$1/version.dll"
  cp "$(bench_bin "$bench_arch")/version.dll" "$1/"
}

make_prefix() {
  cp -al "$bench_template" "$bench/prefix"
  local file
  for file in system.reg user.reg userdef.reg .update-timestamp drive_c/windows/win.ini drive_c/windows/system.ini; do
    file=$bench/prefix/$file
    [[ -f $file ]] || continue
    cp "$file" "$file.copy" && mv "$file.copy" "$file"
  done
  rm -f "$bench/prefix/wineserver" "$bench/prefix/complete"
  mkdir -p "$bench/prefix/drive_c/windows/temp" "$bench/prefix/drive_c/windows/system32/drivers"
  place_disk_programs "$bench/prefix/drive_c/windows/system32"
}

place_system_tools() {
  local system32=$bench/prefix/drive_c/windows/system32 name
  cp -f "$(bench_bin "$bench_arch")/bridge.exe" "$bench/bridge.exe"
  for name in format.com dism.exe diskpart.exe takeown.exe cacls.exe shutdown.exe imdisk.exe; do
    place_bridge "$name" "$system32"
  done
  : >"$system32/drivers/imdisk.sys"
}

# place_application FOLDER: as shipped, with the tools that a release brings or that are put beside it.
place_application() {
  local app=$bench/prefix/drive_c/$bench_app bin
  mkdir -p "$app"
  [[ -d $1 ]] && cp -r "$1/." "$app/"
  bin=$app/Bin
  place_bridge wimlib-imagex.exe "$bin/wimlib-imagex/$bench_arch"
  place_bridge bcdboot.exe "$bin/Boot/$bench_arch"
  place_bridge bootsect.exe "$bin/Boot/$bench_arch"
}

# place_ghost BUILD: the stand-in whose version carries this build, "none" for no version at all.
place_ghost() {
  local folder=$bench/prefix/drive_c/$bench_app/Bin/Ghost/$bench_arch
  mkdir -p "$folder"
  rm -f "$folder/ghost.exe"
  [[ $1 == absent ]] || cp "$(bench_bin "$bench_arch")/ghost-$1.exe" "$folder/ghost.exe"
}
