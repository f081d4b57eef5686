# Stand-in: copies driver packages into the offline image's driver store and prints what dism prints.
# Faults: "die N" (ends without a word after N packages), "pace MS" per package.

head=("" "Deployment Image Servicing and Management tool" "Version: 10.0.19041.844" "")
if [[ ${args[*]} == "/?" ]]; then
  say "${head[@]}" "DISM.exe [dism_options] {Imaging_command} [<Imaging_arguments>]"
  exit 0
fi

image='' drivers='' add=no
for i in "${!args[@]}"; do
  case ${args[i],,} in
    /image:*) image=${paths[i]} image_text=${args[i]:7} ;;
    /add-driver) add=yes ;;
    /driver:*) drivers=${paths[i]} driver_text=${args[i]:8} ;;
    /recurse | /forceunsigned) ;;
    *) refuse "Error: 87 The ${args[i]} option is unknown." ;;
  esac
done
[[ -n $image && $add == yes && -n $drivers ]] || refuse "Error: 87 /image:, /Add-Driver and /Driver: belong together"
system32=$(any_case "$image" Windows/System32)
[[ -d $system32 ]] || refuse "Error: 2 Unable to access the image \"$image_text\""
[[ -d $drivers ]] || refuse "Error: 2 The driver folder \"$driver_text\" does not exist"

say "${head[@]}" "Image Version: 10.0.19045.2006" "" "Searching for driver packages to install..."
mapfile -t packages < <(find "$drivers" -type f -iname '*.inf' | sort)
total=${#packages[@]}
((total > 0)) || refuse "Error: 2 No driver packages found in \"$driver_text\""
say "Found $total driver package(s) to install."

store=$(any_case "$system32" DriverStore/FileRepository)
mkdir -p "$store"
last=$(fault die) || last=-1
pace=$(fault pace) || pace=0
number=0
for package in "${packages[@]}"; do
  if ((number == last)); then
    note "ERROR asked to die after $last packages"
    exit 1
  fi
  number=$((number + 1))
  name=$(basename "$package")
  folder=$store/${name,,}_amd64_$(cksum <"$package" | cut -d' ' -f1)
  mkdir -p "$folder"
  cp -r "$(dirname "$package")/." "$folder/"
  sleep "$(awk "BEGIN { print $pace / 1000 }")"
  say "Installing $number of $total - ${name}: The driver package was successfully installed."
done
say "The operation completed successfully."
