# In front of the real program, which lies beside it, so that its faults can be asked for. Fault: "half"
# (dies within a line).

lister=("${WINELOADER:-wine}" "$bench/prefix/drive_c/lister.exe" "${args[@]}")
if fault half >/dev/null; then
  note "ERROR asked to do half"
  "${lister[@]}" 2>/dev/null | head -c 100
  exit 1
fi
"${lister[@]}" 2>/dev/null
