# Compares the rows (see lang-lines.awk) of one language, the second file, with the English rows,
# the first. -v source: name for messages; -v windows: lines "name:text text ..." of texts that
# are seen together. Run with LC_ALL=C. For English itself both files are the same.

function wrong(line, key, why) {
  print source ":" line ": " key ": " why
  failed = 1
}

# The placeholders of a text with their counts, in an order that no translation changes. Letter
# case counts, as it does to the program.
function placeholders(text, names, counts, name, n, i, found) {
  split("", counts)
  for (n = 0; match(text, /%[A-Za-z_]+%/); text = substr(text, RSTART + RLENGTH)) {
    name = substr(text, RSTART, RLENGTH)
    if (!counts[name]++) {
      for (i = ++n; i > 1 && names[i - 1] > name; i--) names[i] = names[i - 1]
      names[i] = name
    }
  }
  for (i = 1; i <= n; i++) {
    name = names[i]
    found = found (i > 1 ? " " : "") name (counts[name] > 1 ? " x" counts[name] : "")
  }
  return n ? found : "none"
}

# How a text ends, alike in every script: CJK writes other marks and "(&X)" before the colon.
function ending(text) {
  sub(/\(&[A-Z]\)/, "", text)
  if (text ~ /\.\.\.$/) return "..."
  if (text ~ /(\.|\343\200\202)$/) return "full stop"
  if (text ~ /(,|\357\274\214|\343\200\201)$/) return "comma"
  if (text ~ /(:|\357\274\232)$/) return "colon"
  if (text ~ /(\?|\357\274\237)$/) return "question mark"
  return "no mark"
}

function beginning(text) { return text ~ /^- / ? "- " : "" }

# The access key as a capital letter, "" without one, "?" when the text marks it wrongly.
function accessKey(text, at, key) {
  gsub(/&&/, "", text)
  at = index(text, "&")
  if (!at) return ""
  key = toupper(substr(text, at + 1, 1))
  if (key !~ /[A-Z0-9]/ || index(substr(text, at + 1), "&")) return "?"
  return key
}

NR == FNR { english[$2] = $3; next }
{ text[$2] = $3; line[$2] = $1 }

END {
  for (key in english)
    if (!(key in text)) wrong(1, key, "missing; 1033.lng has it")
  for (key in text) check(key)
  if ("String(2)" in text && text["String(2)"] == text["String(3)"])
    wrong(line["String(3)"], "String(3)", "the same as String(2); they tell idle from busy")
  count = split(windows, window, "\n")
  for (w = 1; w <= count; w++) if (window[w] != "") checkWindow(window[w])
  exit failed
}

function check(key, mine, theirs) {
  if (!(key in english)) { wrong(line[key], key, "1033.lng has no such text"); return }
  if (key == "font") return
  mine = placeholders(text[key]); theirs = placeholders(english[key])
  if (mine != theirs) wrong(line[key], key, "placeholders: " mine "; 1033.lng: " theirs)
  mine = ending(text[key]); theirs = ending(english[key])
  if (mine != theirs) wrong(line[key], key, "ends with " mine "; 1033.lng: " theirs)
  if (beginning(text[key]) != beginning(english[key]))
    wrong(line[key], key, "begins otherwise than in 1033.lng (\"" beginning(english[key]) "\")")
  if (index(text[key], "%ip_id% "))
    wrong(line[key], key, "a blank after %ip_id%; the program puts one there itself")
  mine = accessKey(text[key])
  if (mine == "?") wrong(line[key], key, "an \"&\" that is no access key (a letter or digit, once)")
  else if ((mine == "") != (accessKey(english[key]) == ""))
    wrong(line[key], key, mine == "" ? "no access key; 1033.lng has one" : "an access key; 1033.lng has none")
}

function checkWindow(row, title, texts, owner, slot, alternatives, key, i, n, a) {
  title = substr(row, 1, index(row, ":") - 1)
  n = split(substr(row, index(row, ":") + 1), texts, " ")
  for (i = 1; i <= n; i++) {
    slot = texts[i]
    if (slot ~ /^=/) { claim(title, i, slot, substr(slot, 2)); continue }
    split("", alternatives)
    split(slot, alternatives, "|")
    for (a = 1; a in alternatives; a++)
      if (!(alternatives[a] in english)) wrong(1, alternatives[a], "no such text in 1033.lng (" title ")")
      else if (alternatives[a] in text) claim(title, i, alternatives[a], accessKey(text[alternatives[a]]))
  }
}

# Notes that the i-th control of a window has this key; two controls with one key are a fault.
function claim(title, i, key, letter, before) {
  if (letter == "" || letter == "?") return
  before = claimed[title, letter]
  if (before && claimedBy[title, letter] != i)
    wrong(line[key], key, "access key " letter " is also that of " \
          (before ~ /^=/ ? "an item whose key the program appends" : before) " (" title ")")
  claimed[title, letter] = key
  claimedBy[title, letter] = i
}
