# What the demo and the figures install: a source, drivers, a plug-in, settings, an old system in the way.
# Finds set: bench, bench_app; uses image.sh.

scene_drivers=3
scene_pc=BENCH-PC scene_user=Tester scene_group=BENCHGROUP

app_folder() { echo "$bench/prefix/drive_c/$bench_app"; }

make_drivers() {
  local number folder
  for ((number = 1; number <= scene_drivers; ++number)); do
    folder="$bench/volumes/d/Driver packages/net $number"
    mkdir -p "$folder"
    printf '[Version]\r\nSignature="$Windows NT$"\r\nClass=Net\r\nDriverVer=01/0%d/2024,1.%d\r\n' $number $number \
      >"$folder/net$number.inf"
    head -c 30000 /dev/urandom >"$folder/net$number.sys"
  done
}

make_plugin() {
  mkdir -p "$bench/volumes/d/Tools"
  cp "$bench/companion.exe" "$bench/volumes/d/Tools/fix.exe"
}

make_answer_template() {
  printf '\xef\xbb\xbf<?xml version="1.0" encoding="utf-8"?>\r\n<!--\r\n[Pavoline]\r\nprocess=1\r\n-->\r\n'
  printf '<unattend arch="%%Pavoline-Arch%%" pc="%%Pavoline-PC%%" group="%%Pavoline-Group%%" user="%%Pavoline-User%%"/>\r\n'
}

# write_settings: every optional step of an installation on.
write_settings() {
  make_answer_template >"$bench/volumes/d/answers.xml"
  printf '%s\r\n' '[Option]' TitleLng=1 "PCUser=$scene_user" "ComputerName=$scene_pc" "WorkGroup=$scene_group" \
    Unattend=1 'UnattendFile=D:\answers.xml' AddDriver=1 'AddDriverFile=D:\Driver packages' \
    Plugin=1 'PluginFile=D:\Tools\fix.exe %ip% %bp%' MinimizeGhost=0 >"$(app_folder)/Pavoline.ini"
}

make_old_system() {
  mkdir -p "$bench/volumes/e/Windows.old/System32" "$bench/volumes/e/Users/Before"
  head -c 100000 /dev/urandom >"$bench/volumes/e/Windows.old/System32/kernel32.dll"
  echo "must be gone" >"$bench/volumes/e/Users/Before/letter.txt"
}

make_scene() {
  make_drivers
  make_plugin
  write_settings
  make_old_system
}
