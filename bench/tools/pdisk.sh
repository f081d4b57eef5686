# The bench's disks behind diskpart: the partition tables of their images are real (sfdisk), the volumes
# that come with a partition are the bench's own. Finds set: bench.

pdisk_image() { awk -F '\t' -v number="$1" '$1 == "disk" && $2 == number { print $3 }' "$bench/disks/table"; }

# "gpt", "dos", or nothing for a disk without a table.
pdisk_style() { sfdisk -d "$(pdisk_image "$1")" 2>/dev/null | sed -n 's/^label: //p'; }

pdisk_partitions() { sfdisk -d "$(pdisk_image "$1")" 2>/dev/null | grep -c 'start=' || true; }

pdisk_write() { sfdisk -q "${@:2}" "$(pdisk_image "$1")" >/dev/null 2>&1; }

# pdisk_label DISK gpt|dos: a new table without partitions.
pdisk_label() { pdisk_write "$1" <<<"label: $2"; }

# pdisk_add DISK TYPE [MB]: takes the rest of the disk without a size; prints the partition's number.
pdisk_add() {
  pdisk_write "$1" --append <<<"${3:+size=$3M, }type=$2" && pdisk_partitions "$1"
}

pdisk_active() { sfdisk -q --activate "$(pdisk_image "$1")" "$2" >/dev/null 2>&1; }

# Both ends of the disk, its table with them; the volumes that lay on it are gone.
pdisk_clean() {
  local image size name letters letter
  image=$(pdisk_image "$1")
  size=$(($(stat -c %s "$image") >> 20))
  dd if=/dev/zero of="$image" bs=1M count=1 conv=notrunc status=none
  dd if=/dev/zero of="$image" bs=1M count=1 seek=$((size - 1)) conv=notrunc status=none
  while IFS=$'\t' read -r name letters; do
    for ((letter = 0; letter < ${#letters}; ++letter)); do
      [[ $letters == - ]] || bash "$bench/bench" letter "$bench" "${letters:letter:1}" none
    done
    awk -F '\t' -v name="$name" '$1 != "volume" || $2 != name' "$bench/disks/table" >"$bench/disks/table.new"
    mv "$bench/disks/table.new" "$bench/disks/table"
  done < <(awk -F '\t' -v disk="$1/" '$1 == "volume" && index($3, disk) == 1 { print $2 "\t" $4 }' "$bench/disks/table")
}

# pdisk_format DISK PARTITION FILE-SYSTEM LABEL
pdisk_format() { bash "$bench/bench" volume "$bench" "disk$1-$2" "$1/$2" - "${3^^}" "$4" </dev/null >/dev/null 2>&1; }

pdisk_assign() { bash "$bench/bench" letter "$bench" "$3" "disk$1-$2" </dev/null >/dev/null 2>&1; }
