# Stand-in for a plug-in.

say "${args[*]}"
