#!/usr/bin/env bash
# The static checks: format, direction of the includes, clang-tidy.
set -euo pipefail
cd "$(dirname "$0")/.."

echo "format, layers"
scripts/check-sources.sh

echo "clang-tidy"
scripts/build.sh dev >/dev/null
cmake --preset bench >/dev/null
# check BUILD FOLDERS: the sources in FOLDERS, as BUILD compiles them
check() {
  run-clang-tidy -quiet -p "build/$1" "^(?!.*/build/).*/($2)/.*\.cpp\$" >"build/$1/clang-tidy.log" 2>&1 || {
    grep -E '(warning|error):' -A 3 "build/$1/clang-tidy.log" || tail -n 30 "build/$1/clang-tidy.log"
    exit 1
  }
}
check dev 'src|simulator|tests'
check bench bench
echo "lint: no findings"
