# Reads one language source and prints "line TAB key TAB text TAB name" for every text in it; the keys
# are those of [Option], which have no name, and String(n), Caption(n) and More(n). A line that the
# format does not know is told as "file:line: why", and the exit status is then 1.
# -v list: src/form/text_list.h, which names the texts; -v complete=1: none may be missing. Run with LC_ALL=C: lines are taken as bytes.

BEGIN {
  kindOf["LANGUAGE_OPTIONS"] = "Option"
  kindOf["STRINGS"] = "String"; kindOf["CAPTIONS"] = "Caption"; kindOf["MORE"] = "More"
  while ((getline row < list) > 0) {
    if (row ~ /^#define PAVOLINE_[A-Z_]+\(X\)/) {
      sub(/^#define PAVOLINE_/, "", row); sub(/\(.*/, "", row)
      kind = kindOf[row]
    } else if (kind == "Option") {
      if (match(row, /"[A-Za-z]+"/)) option[substr(row, RSTART + 1, RLENGTH - 2)]
    } else if (kind && match(row, /X\([A-Za-z0-9]+\)/)) {
      entry = substr(row, RSTART + 2, RLENGTH - 3)
      if (entry in numbered) wrongList(entry " stands there twice: " numbered[entry] " and " kind "(" count[kind] + 0 ")")
      numbered[entry] = kind "(" count[kind]++ + 0 ")"
      name[numbered[entry]] = entry
    }
  }
  if (!count["String"] || !count["Caption"] || !count["More"]) wrongList("no list of texts")
}

function wrong(why) {
  print FILENAME ":" FNR ": " why > "/dev/stderr"
  failed = 1
}

function wrongList(why) {
  print list ": " why > "/dev/stderr"
  failed = 1
}

function known(key) {
  if (section == "Option") return key in option
  return key in name && (section == "More") == (key ~ /^More/)
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
  print FNR "\t" key "\t" text "\t" name[key]
}
END {
  if (complete)
    for (key in name)
      if (!(key in seen)) { print FILENAME ":1: " key " " name[key] ": missing" > "/dev/stderr"; failed = 1 }
  exit failed
}
