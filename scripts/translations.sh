#!/usr/bin/env bash
# Checks that every text of the windows is translated, into each language of translations/. With --update it enters new
# texts there for a translator, and removes those that no source has any more.
set -euo pipefail
cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

collect() { # FILE: brings it up to the sources
  # Without line numbers: a file changes with the texts alone. "Message::Of" is how the logic marks its texts, without
  # the toolkit's macro in its header.
  /usr/lib/qt6/bin/lupdate -silent -no-obsolete -locations none -I src -tr-function-alias tr+=Of \
    src/*.cpp src/*.h $(find src -mindepth 2 -name '*.cpp' -o -mindepth 2 -name '*.h' | LC_ALL=C sort) \
    translations/toolkit_texts.cpp -ts "$1" 2>"$work/complaints" || {
    cat "$work/complaints" >&2
    exit 1
  }
  if grep -v "Class 'orvalis::Message' lacks Q_OBJECT macro" "$work/complaints" >&2; then exit 1; fi
}

for file in translations/*.ts; do
  if [[ ${1-} == --update ]]; then
    collect "$file"
  else
    fresh=$work/${file##*/}
    cp "$file" "$fresh"
    collect "$fresh"
    diff -u "$file" "$fresh" || {
      echo "$file is not that of the sources: run scripts/translations.sh --update" >&2
      exit 1
    }
  fi
done
scripts/check-translations.py translations/*.ts
