#!/usr/bin/env bash
# Writes Debian's changelog of PACKAGE from CHANGELOG.md, newest version first:
# debian/changelog.sh PACKAGE VERSION MAINTAINER
# The section "Unreleased" is VERSION, of the day of the last commit; the others bear their own version and day.
set -euo pipefail
cd "$(dirname "$0")/../.."
day=$(date -u -d "@${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CHANGELOG.md)}" +%Y-%m-%d)
awk -v package="$1" -v version="$2" -v maintainer="$3" -v today="$day" '
  # One item, in lines of at most 78 characters.
  function print_item(words, count, line, i) {
    if (item == "") return
    count = split(item, words, " ")
    line = "  *"
    for (i = 1; i <= count; ++i) {
      if (length(line) + length(words[i]) >= 78) { print line; line = "   " }
      line = line " " words[i]
    }
    print line
    item = ""
  }
  function close_entry(command, date) {
    print_item()
    if (!open) return
    command = "LC_ALL=C date -u -R -d " day
    command | getline date
    close(command)
    print "\n -- " maintainer "  " date "\n"
  }
  /^## / {
    close_entry()
    open = 1
    number = $2 == "Unreleased" ? version : $2
    day = $2 == "Unreleased" ? today : substr($3, 2, 10)
    print package " (" number "-1) unstable; urgency=medium\n"
    next
  }
  /^- / { print_item(); item = substr($0, 3); next }
  /^  / { item = item " " $0 }
  END { close_entry() }' CHANGELOG.md
