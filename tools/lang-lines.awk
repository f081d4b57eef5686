# Reads one language source and prints "line TAB key TAB text" for every text in it; the keys are
# font, String(n), Caption(n) and More(n). A line that the format does not know is told as "file:line: why",
# and the exit status is then 1. Run with LC_ALL=C: lines are taken as bytes.

function wrong(why) {
  print FILENAME ":" FNR ": " why > "/dev/stderr"
  failed = 1
}

function number(key) {
  gsub(/[^0-9]/, "", key)
  return key
}

function known(key) {
  if (section == "Option") return key == "font"
  # The same number written in two ways (String(07)) would be two keys to the program.
  if (section == "More") return key ~ /^More\((0|[1-9][0-9]?[0-9]?)\)$/
  if (section != "Language") return 0
  if (key ~ /^String\((0|[1-9][0-9]*)\)$/) return number(key) + 0 <= 114
  if (key ~ /^Caption\((0|[1-9][0-9]*)\)$/) return number(key) + 0 <= 12
  return 0
}

FNR == 1 && /^\357\273\277/ { wrong("a byte-order mark stands before the text"); next }
/[\001-\037\177]/ { wrong("a control character (CR, TAB, ...)"); next }
/^;/ || /^$/ { next }
/^\[/ {
  section = substr($0, 2, length($0) - 2)
  if ($0 !~ /^\[(Option|Language|More)\]$/) wrong("unknown section " $0)
  # Reading looks into the first section of a name only.
  else if (sections[section]++) wrong("section " $0 " is given twice")
  next
}
{
  at = index($0, "=")
  if (!at) { wrong("neither key=text nor section, comment or blank line"); next }
  key = substr($0, 1, at - 1)
  text = substr($0, at + 1)
  if (!known(key)) { wrong("unknown key " key (section ? " in [" section "]" : " before any section")); next }
  if (key in seen) { wrong(key " is given twice, first in line " seen[key]); next }
  seen[key] = FNR
  if (text == "") { wrong(key " is empty: leave an unused text out"); next }
  # Reading a value trims it and strips a pair of quotes around it.
  if (text ~ /^ | $/) { wrong(key " begins or ends with a blank, which reading cuts off"); next }
  if (text ~ /^".*"$/ || text ~ /^'.*'$/) { wrong(key " stands in quotes, which reading strips"); next }
  print FNR "\t" key "\t" text
}
END { exit failed }
