#!/usr/bin/env bash
# Makes the pages of docs/ that users read into HTML, for one system: scripts/guide.sh linux|windows FOLDER
# What stands between the lines "<!-- linux -->" or "<!-- windows -->" and "<!-- end -->" is for that system alone.
set -euo pipefail
cd "$(dirname "$0")/../docs"
system=$1
out=$2
pages=(guide verdict profile history logs dbus network mqtt security serial-protocol simulator)

rm -rf "$out"
mkdir -p "$out/images"
cp images/*.png "$out/images/"
for page in "${pages[@]}"; do
  title=$(sed -n '1s/^# //p' "$page.md")
  {
    cat <<HEAD
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>$title - Orvalis</title>
<style>
body { max-width: 52em; margin: 2em auto; padding: 0 1em; font: 16px/1.5 system-ui, sans-serif; }
table { border-collapse: collapse; }
th:empty { padding: 0; border: none; }
th, td { border: 1px solid #8888; padding: 0.2em 0.6em; text-align: left; vertical-align: top; }
img { max-width: 100%; }
pre { overflow: auto; padding: 0.6em; background: #8882; }
:root { color-scheme: light dark; }
</style>
</head>
<body>
HEAD
    [[ $page == guide ]] || echo '<p><a href="guide.html">The guide</a></p>'
    awk -v wanted="$system" '
      BEGIN { shown = 1 }
      /^<!-- (linux|windows) -->$/ { shown = $2 == wanted; next }
      /^<!-- end -->$/ { shown = 1; next }
      shown' "$page.md" |
      sed -E 's/\[([a-z-]+)\.md\]\(/[\1](/g; s/\]\(([a-z-]+)\.md(#[a-z-]+)?\)/](\1.html\2)/g' |
      cmark-gfm --extension table |
      # What links and the program's own help lead to: the heading in small letters, with "-" for blanks.
      awk 'match($0, /^<h[1-6]>/) {
             id = tolower($0); gsub(/<[^>]*>|&[a-z]+;/, "", id); gsub(/[^a-z0-9 _-]/, "", id); gsub(/ /, "-", id)
             sub(/>/, " id=\"" id "\">")
           }
           { print }'
    echo '</body></html>'
  } >"$out/$page.html"
done
