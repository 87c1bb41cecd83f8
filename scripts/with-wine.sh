#!/usr/bin/env bash
# Runs a command with this build's Wine on a separate X server, and stops both afterwards: scripts/with-wine.sh
# COMMAND...
set -euo pipefail
cd "$(dirname "$0")/.."
export WINEPREFIX=$PWD/build/windows/wine WINEARCH=win64 WINEDEBUG=-all WINELOADER=/usr/lib/wine/wine64
mkdir -p build/windows
display=$(mktemp)
Xvfb -displayfd 3 -noreset -screen 0 1280x1024x24 3>"$display" 2>/dev/null &
screen=$!
trap 'wineserver -k >/dev/null 2>&1 || true; kill $screen $(jobs -p) 2>/dev/null || true; rm -f "$display"' EXIT
while [[ ! -s $display ]]; do
  kill -0 $screen 2>/dev/null || { echo "there is no screen: Xvfb ended" >&2; exit 1; }
  sleep 0.05
done
DISPLAY=:$(cat "$display")
export DISPLAY
# A program that keeps Wine's services running: otherwise they restart for each program and hold on to its output.
scripts/wine.sh cmd /c exit >/dev/null 2>&1
tail -f /dev/null | scripts/wine.sh cmd >/dev/null 2>&1 &
scripts/wine.sh cmd /c exit >/dev/null 2>&1
"$@"
