# Small sources for the tests and the faults, in the run's folder props/. Finds set: bench.

# A Windows that has what the later steps of an installation look for, small enough to be
# installed a dozen times. The second edition is the first and one file more.
make_props() {
  local props=$bench/props system
  mkdir -p "$props/edition-1/Windows/"{Boot/PCAT,Boot/EFI,System32/config,SysWOW64} "$props/edition-1/Program Files/Tom & Jerry 100%"
  system=$props/edition-1/Windows
  head -c 40000 /dev/urandom >"$system/Boot/PCAT/bootmgr"
  head -c 90000 /dev/urandom >"$system/Boot/EFI/bootmgfw.efi"
  head -c 70000 /dev/urandom >"$system/System32/config/SYSTEM"
  cp "$(bench_bin "${ARCH:-x64}")/kernel32.dll" "$system/System32/"
  head -c 9000000 /dev/urandom >"$props/edition-1/Program Files/Tom & Jerry 100%/Документ 日本.bin"
  cp -al "$props/edition-1" "$props/edition-2"
  head -c 500000 /dev/urandom >"$props/edition-2/Windows/Professional.dat"
  capture "$props/small.wim" "$props/edition-1" "$props/edition-2" --compress=none
  split_wim "$props/small.wim" 4 "$props/small.swm"
  make_gho "$props" "$props/small.gho"
  # Not listed as an image below this size.
  cp "$props/small.wim" "$props/large.wim"
  truncate -s 401M "$props/large.wim"
  make_isos "$props"
}

make_isos() {
  local root
  root=$(mktemp -d "$bench/iso.XXXX")
  echo "nothing to install" >"$root/readme.txt"
  make_iso_of "$root" "$1/without-image.iso"
  mkdir "$root/sources"
  cp "$1/small.wim" "$root/sources/install.wim"
  make_iso_of "$root" "$1/install.iso"
  rm -rf "$root"
}
