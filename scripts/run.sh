#!/usr/bin/env bash
# Starts the program, connected to a simulated unit that plays a night in ten minutes, or with --demo without a unit.
# Settings are kept in build/profile, apart from the user's own. Without a display it runs headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=build/release/bin
options=(--profile build/profile)
if [[ -z ${DISPLAY:-} && -z ${WAYLAND_DISPLAY:-} ]]; then
  echo "No display: running headless. Stop with Ctrl-C."
  options+=(--headless)
fi
if [[ ${1:-} == --demo ]]; then
  exec "$bin/orvalis" "${options[@]}" --demo
fi

folder=$(mktemp -d)
"$bin/orvalis-unit" --link "$folder/unit" --speed 60 >/dev/null &
unit=$!
trap 'kill $unit 2>/dev/null || true; wait $unit 2>/dev/null || true; rm -rf "$folder"' EXIT
while [[ ! -e $folder/unit ]]; do
  kill -0 $unit
  sleep 0.05
done
"$bin/orvalis" "${options[@]}" --port "$folder/unit"
