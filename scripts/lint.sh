#!/usr/bin/env bash
# The static checks: format, direction of the includes, clang-tidy.
set -euo pipefail
cd "$(dirname "$0")/.."

echo "format, layers"
scripts/check-sources.sh

echo "clang-tidy"
scripts/build.sh dev >/dev/null
run-clang-tidy -quiet -p build/dev '^(?!.*/build/).*/(src|simulator)/.*\.cpp$' >build/dev/clang-tidy.log 2>&1 || {
  grep -E '(warning|error):' -A 3 build/dev/clang-tidy.log || tail -n 30 build/dev/clang-tidy.log
  exit 1
}
echo "lint: no findings"
