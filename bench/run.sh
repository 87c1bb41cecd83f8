#!/usr/bin/env bash
# Measures everything that has a budget and prints the figures beside it.
#   bench/run.sh [SECONDS]    how long the whole program is watched; 300 unless given
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh bench >/dev/null
exec python3 bench/measure.py build/bench/bin "${1:-300}"
