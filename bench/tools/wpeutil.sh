# Stand-in: nothing restarts. The file "restart" says that the machine would be gone by now.

case ${args[0],,} in
  waitfornetwork | waitforremovablestorage | updatebootinfo) ;;
  reboot | shutdown) date +%s >"$bench/restart" ;;
  *) refuse "unknown command ${args[0]:-}" ;;
esac
