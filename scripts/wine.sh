#!/usr/bin/env bash
# Runs a Windows program of this build under Wine, with its own prefix in build/windows, created at first use.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$root/build/windows/wine} WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export WINELOADER=/usr/lib/wine/wine64
if [[ ! -e $WINEPREFIX/orvalis-ready ]]; then
  mkdir -p "$WINEPREFIX"
  exec 9>"$WINEPREFIX.lock"
  flock 9
  if [[ ! -e $WINEPREFIX/orvalis-ready ]]; then
    {
      wineboot -i
      # Without a window manager Wine's managed windows delay each exit by two seconds.
      "$WINELOADER" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
      wineserver -w
    } >/dev/null 2>&1 9>&-
    touch "$WINEPREFIX/orvalis-ready"
  fi
  exec 9>&-
fi
exec "$WINELOADER" "$@"
