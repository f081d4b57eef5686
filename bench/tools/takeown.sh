# Stand-in: checks its arguments; ownership has no meaning on the bench.

file=''
i=0
while ((i < ${#args[@]})); do
  case ${args[i],,} in
    /f) i=$((i + 1)); file=${args[i]:-} path=${paths[i]:-} ;;
    /a | /r) ;;
    /d) i=$((i + 1)); [[ ${args[i]:-} =~ ^[ynYN]$ ]] || refuse "/d takes y or n" ;;
    *) refuse "Invalid argument/option - '${args[i]}'" ;;
  esac
  i=$((i + 1))
done
[[ -n $file ]] || refuse "Mandatory option '/f' is missing"
[[ -e $path ]] || refuse "The system cannot find the file specified: $file"
say "SUCCESS: The file (or folder): \"$file\" now owned by the administrators group."
