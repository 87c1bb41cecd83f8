#!/usr/bin/env bash
# Measures everything that has a budget, beside other programs where they do the same, and prints figures and budgets.
#   bench/run.sh [--document FILE] [SECONDS]
# SECONDS: how long processor time is measured; default 120. FILE, such as docs/performance.md: gets the table.
# It ends by itself, with an error when what it measures ends or is silent.
set -euo pipefail
cd "$(dirname "$0")/.."
document=()
if [[ ${1:-} == --document ]]; then
  document=("$(realpath "$2")")
  shift 2
fi
scripts/build.sh bench >/dev/null
exec python3 bench/measure.py build/bench/bin "${1:-120}" "${document[@]}"
