#!/usr/bin/env bash
# The static checks: format, direction of the includes, clang-tidy. Of the tests and benchmarks those that Linux builds.
set -euo pipefail
cd "$(dirname "$0")/.."

echo "format, layers"
scripts/check-sources.sh

tidy() { # PRESET PATTERN
  run-clang-tidy -quiet -p "build/$1" "^$PWD/$2" >"build/$1/clang-tidy.log" 2>&1 || {
    grep -E '(warning|error):' -A 3 "build/$1/clang-tidy.log" || tail -n 30 "build/$1/clang-tidy.log"
    exit 1
  }
}
echo "clang-tidy"
scripts/build.sh dev >/dev/null
tidy dev '(src|drivers|simulator|tests)/.*\.cpp$'
cmake --preset bench >/dev/null
tidy bench 'bench/.*\.cpp$'
echo "lint: no findings"
