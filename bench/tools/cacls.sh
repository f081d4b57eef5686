# Stand-in: checks its arguments and that the question "Are you sure" is answered on standard input.

[[ -n ${paths[0]:-} && -e ${paths[0]} ]] || refuse "The system cannot find the file specified: ${args[0]:-}"
edit=no granted=no
i=1
while ((i < ${#args[@]})); do
  case ${args[i],,} in
    /t | /c) ;;
    /e) edit=yes ;;
    /g | /grant)
      i=$((i + 1))
      [[ ${args[i]:-} =~ ^[A-Za-z]+:[NRWCFnrwcf]$ ]] || refuse "bad grant ${args[i]:-}"
      granted=yes
      ;;
    *) refuse "Invalid argument/option ${args[i]}" ;;
  esac
  i=$((i + 1))
done
[[ $granted == yes ]] || refuse "nothing to do"
if [[ $edit == no ]]; then
  answer=''
  read -r -t 5 answer || true
  [[ ${answer,,} == y* ]] || refuse "Are you sure (Y/N)? was not answered with Y"
fi
say "processed dir: ${args[0]}"
