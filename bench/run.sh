#!/usr/bin/env bash
# Measures everything that has a budget and prints figures and budgets.
#   bench/run.sh [SECONDS]    how long the program is measured; default 300
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh bench >/dev/null
exec python3 bench/measure.py build/bench/bin "${1:-300}"
