# A volume of the bench made anew: mkntfs on its image, or the plain folder emptied.
source "$bench/tools/volume.sh"

letter=$(letter_of "${args[0]:-}") || refuse "Required parameter missing - a drive letter"
[[ ${args[0]} == *\\ ]] && refuse "Invalid drive ${args[0]}"
label='' quick=no sure=no ntfs=no
for option in "${args[@]:1}"; do
  case ${option,,} in
    /fs:ntfs) ntfs=yes ;;
    /v:*) label=${option:3} ;;
    /q) quick=yes ;;
    /x) ;;
    /y) sure=yes ;;
    *) refuse "Invalid parameter - $option" ;;
  esac
done
[[ $ntfs == yes ]] || refuse "the program formats as NTFS only"
[[ $sure == yes ]] || refuse "would ask: WARNING, ALL DATA ON DRIVE ${args[0]} WILL BE LOST! (Y/N)"
((${#label} <= 32)) || refuse "label longer than 32 characters"
[[ $letter != [cx] ]] || refuse "Cannot format the system drive"
volume=$(volume_behind "$letter") && volume_exists "$volume" || refuse "The volume ${args[0]} does not exist"
if value=$(fault die); then
  note "ERROR asked to die"
  exit "${value:-1}"
fi
say "The type of the file system is NTFS." "${quick/yes/Quick}Formatting"
volume_format "$volume" "$label" || refuse "Cannot lock the drive: it is in use"
say "Format complete."
