# A 32-bit Wine for the 32-bit program, wherever the machine's own packages bring none: a Debian of that
# architecture in a folder, made once and entered with chroot. Whatever runs there has mounts and
# processes of its own that end with it, so that nothing is ever mounted below the folder for others.

i386_root=$repo/build/i386
i386_packages="wine wine32 fonts-wine xvfb wimtools ntfs-3g xorriso imagemagick procps perl fdisk"

# apart COMMAND...: the volumes that other runs have mounted are let go, which could not be formatted else.
apart() {
  unshare --mount --pid --fork --kill-child bash -c 'umount --all --lazy --types fuse,fuseblk; exec "$@"' apart "$@"
}

# i386_ready: the folder is there and holds what is needed today.
i386_ready() { [[ "$(cat "$i386_root/made-with" 2>/dev/null)" == "$i386_packages" ]]; }

# The release that the machine itself has, and where apt gets it from.
i386_release() {
  local codename
  codename=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")
  apt-get indextargets --format '$(RELEASE) $(REPO_URI) $(ORIGIN)' 'Created-By: Packages' 2>/dev/null |
    awk -v codename="$codename" '
      $1 == codename && $3 == "Debian" && !uri { uri = $2 }
      END { print codename, uri ? uri : "http://deb.debian.org/debian" }'
}

# make_i386: makes the folder when it is not ready, which takes some 90 seconds. Says nothing but the
# reason why this machine cannot make or enter it.
make_i386() (
  ((EUID == 0)) || { echo "needs root"; return 1; }
  mkdir -p "$repo/build"
  apart mount -t tmpfs tmpfs "$repo/build" 2>/dev/null || { echo "mounts are not allowed here"; return 1; }
  exec 9>"$i386_root.lock"
  flock 9
  i386_ready && return
  (need_packages debootstrap) >/dev/null 2>&1 || { echo "the Debian package debootstrap cannot be installed"; return 1; }
  local part=$i386_root.part release mirror
  read -r release mirror < <(i386_release)
  rm -rf --one-file-system "$i386_root" "$part"
  mkdir -p "$part/etc/dpkg/dpkg.cfg.d"
  echo force-unsafe-io >"$part/etc/dpkg/dpkg.cfg.d/unsafe-io"  # half the time
  apart debootstrap --arch=i386 --variant=minbase --include="${i386_packages// /,}" "$release" "$part" "$mirror" \
    >"$part.log" 2>&1 || { echo "$(tail -n 1 "$part.log") ($part.log)"; return 1; }
  rm -f "$part"/var/cache/apt/archives/*.deb
  echo "$i386_packages" >"$part/made-with"
  mv "$part" "$i386_root"
)

# in_i386 COMMAND...: runs a command in the folder, where checkout and bench have their own paths.
in_i386() {
  apart bash -euc 'source "$0/common.sh" && source "$0/i386.sh" && enter_i386 "$@"' "$bench_source/lib" "$@"
}

enter_i386() {
  local folder
  mount -t proc proc "$i386_root/proc"
  mount -t tmpfs tmpfs "$i386_root/tmp"
  mount --rbind /dev "$i386_root/dev"
  for folder in "$repo" "$bench_build"; do
    mkdir -p "$i386_root$folder"
    mount --bind "$folder" "$i386_root$folder"
  done
  chroot "$i386_root" /usr/bin/env -i --chdir="$repo" PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
    GTEST_COLOR=no ARCH=x86 BENCH_PROGRAMS=built PAVOLINE_BENCH_BUILD="$bench_build" E2E_BENCH="$bench_build/e2e-x86" "$@"
}
