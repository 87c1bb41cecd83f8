#!/usr/bin/env bash
# The logic includes the C++ standard library and itself, nothing else: no Qt, no operating system, no outer folder.
set -euo pipefail
cd "$(dirname "$0")/../src"

allowed_in() {
  case $1 in
    base) echo base ;;
    acquisition) echo 'base|acquisition|config' ;;
    config) echo 'base|acquisition|config' ;;
    history) echo 'base|acquisition|config|history' ;;
    server) echo 'base|acquisition|config|server' ;;
    publish) echo 'base|acquisition|config|publish' ;;
    headless) echo 'base|acquisition|config|headless' ;;
  esac
}

status=0
for folder in base acquisition config history server publish headless; do
  [[ -d $folder ]] || continue
  while IFS= read -r line; do
    echo "outside the layer: src/$line" >&2
    status=1
  done < <(find "$folder" -maxdepth 1 '(' -name '*.h' -o -name '*.cpp' ')' |
    xargs -r grep -nHE '^#include' |
    grep -vE "#include \"($(allowed_in "$folder"))/[a-z_]+\.h\"|#include <[a-z_]+>" || true)
done
exit $status
