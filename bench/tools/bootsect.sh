# Stand-in: records which boot code a volume was given in disks/LETTER.bootsect.

case ${args[0]:-} in
  /nt52 | /nt60) ;;
  *) refuse "the first argument is /nt52 or /nt60, given: ${args[0]:-}" ;;
esac
letter=$(letter_of "${args[1]:-}") || refuse "no volume given: ${args[1]:-}"
[[ ${args[1]} != *\\ ]] || refuse "bad volume ${args[1]}"
drive_folder "$letter" >/dev/null || refuse "the volume ${args[1]} does not exist"
mbr=no
for option in "${args[@]:2}"; do
  case $option in
    /mbr) mbr=yes ;;
    /force) ;;
    *) refuse "unknown option $option" ;;
  esac
done
printf 'code=%s mbr=%s\n' "${args[0]#/}" "$mbr" >"$bench/disks/$letter.bootsect"
say "Target volumes will be updated with ${args[0]#/} compatible bootcode." "" "${args[1]}" \
  "    Successfully updated filesystem bootcode." "" "Bootcode was successfully updated on all targeted volumes."
