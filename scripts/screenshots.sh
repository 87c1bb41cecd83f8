#!/usr/bin/env bash
# Makes the pictures of the documentation: the program itself writes them, on a screen of its own.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=build/release/bin
out=docs/images
mkdir -p "$out"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export ORVALIS_PROFILE_DIR=$folder

# picture NAME SCENARIO [KEY VALUE]...
picture() {
  local name=$1 scenario=$2
  shift 2
  while (($#)); do
    "$bin/orvalis" profile set "$1" "$2"
    shift 2
  done
  "$bin/orvalis-unit" --link "$folder/unit" --scenario "simulator/scenarios/$scenario.scenario" >/dev/null &
  local unit=$!
  while [[ ! -e $folder/unit ]]; do sleep 0.05; done
  xvfb-run -a -s "-screen 0 1280x1024x24" "$bin/orvalis" --port "$folder/unit" --picture "$out/$name.png"
  kill $unit
  wait $unit || true
  echo "$out/$name.png"
}

picture panel-clear clear Centigrade True
picture panel-cloudy cloudy
picture panel-rain rain
picture panel-night clear NightTheme 1
"$bin/orvalis" profile set NightTheme 0
