# Stand-in: nothing restarts. The file "restart" says until when a restart is pending.

pending=$bench/restart
verb='' delay=30
i=0
while ((i < ${#args[@]})); do
  case ${args[i]/#-//} in
    /r | /s | /a) [[ -z $verb ]] || refuse "more than one of -r, -s, -a"; verb=${args[i]:1} ;;
    /f) ;;
    /t) i=$((i + 1)); delay=${args[i]:-}; [[ $delay =~ ^[0-9]+$ ]] || refuse "bad time $delay" ;;
    *) refuse "unknown option ${args[i]}" ;;
  esac
  i=$((i + 1))
done
case $verb in
  a)
    [[ -f $pending && $(cat "$pending") -ge $(date +%s) ]] || { refuse_code=92 refuse "no shutdown was in progress (1116)"; }
    rm "$pending"
    ;;
  r | s) echo "$(($(date +%s) + delay))" >"$pending" ;;
  *) refuse "none of -r, -s, -a" ;;
esac
