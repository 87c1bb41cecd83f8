#!/usr/bin/env bash
# Measures the Windows program under Wine and prints the figures beside its budgets.
#   bench/windows.sh [SECONDS]    how long its processor time is watched; 60 unless given
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh release >/dev/null
exec scripts/with-wine.sh python3 bench/windows.py build/windows/bin build/release/bin/orvalis-unit "${1:-60}"
