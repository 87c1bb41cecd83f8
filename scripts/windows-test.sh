#!/usr/bin/env bash
# The tests of the Windows build, under Wine and on a screen of their own. The simulated unit stays a Linux program.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
cmake --build --preset dev --target orvalis-unit

export WINEPREFIX=$PWD/build/windows/wine WINEARCH=win64 WINEDEBUG=-all WINELOADER=/usr/lib/wine/wine64
mkdir -p build/windows
display=$(mktemp)
Xvfb -displayfd 3 -screen 0 1280x1024x24 3>"$display" 2>/dev/null &
screen=$!
trap 'wineserver -k >/dev/null 2>&1 || true; kill $screen $(jobs -p) 2>/dev/null || true; rm -f "$display"' EXIT
while [[ ! -s $display ]]; do sleep 0.05; done
DISPLAY=:$(cat "$display")
export DISPLAY
# A program that stays, and Wine's own services with it: they would start anew for each test otherwise, and hold on to
# its output.
scripts/wine.sh cmd /c exit >/dev/null 2>&1
tail -f /dev/null | scripts/wine.sh cmd >/dev/null 2>&1 &
scripts/wine.sh cmd /c exit >/dev/null 2>&1
ctest --preset windows "$@"
