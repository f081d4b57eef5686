# Stand-in: prints the partitions of the bench's disks, which have no tables that a device query could
# read. disks/partitions holds "address drive bytes fs kind style active model" per line, tab-separated.
source "$bench/tools/volume.sh"

for option in "${args[@]}"; do
  [[ $option == -vaskor ]] || refuse "unknown option $option"
done

size_text() {
  awk -v bytes="$1" 'BEGIN {
    unit = "MB"; size = bytes / 1048576
    if (size >= 1024) { size /= 1024; unit = "GB" }
    if (size >= 1024) { size /= 1024; unit = "TB" }
    printf "%.2f%s", size, unit }'
}

while IFS=$'\t' read -r address drive bytes fs kind style active model; do
  letter=$(letter_of "$drive") || letter=''
  printf '%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\r\n' "$address" "$drive" "$(size_text "$bytes")" "$fs" "$kind" \
    "$model" "$(volume_label "${letter:-none}")" "$style" "$active"
done <"$bench/disks/partitions"
