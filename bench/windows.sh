#!/usr/bin/env bash
# Measures the Windows program under Wine and prints the figures with their budgets.
#   bench/windows.sh [SECONDS]    how long processor time is measured; default 60
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh release >/dev/null
exec scripts/with-wine.sh python3 bench/windows.py build/windows/bin build/release/bin/orvalis-unit "${1:-60}"
