#!/usr/bin/env bash
# Takes the screenshots for the documentation, on a separate X server.
set -euo pipefail
# On a separate bus: the traffic window shows calls of clients.
[[ ${OWN_BUS:-} ]] || OWN_BUS=1 exec dbus-run-session -- "$0"
cd "$(dirname "$0")/.."
bin=build/release/bin
out=docs/images
mkdir -p "$out"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export ORVALIS_PROFILE_DIR=$folder

Xvfb -displayfd 3 -noreset -screen 0 1280x1024x24 3>"$folder/display" 2>/dev/null &
screen=$!
trap 'kill $screen; rm -rf "$folder"' EXIT
# until_true COMMAND [PID]...: waits until it succeeds, as long as these processes run, a minute at most
until_true() {
  local command=$1 end=$((SECONDS + 60)) pid
  shift
  until eval "$command"; do
    for pid in "$@"; do
      kill -0 "$pid" 2>/dev/null || { echo "ended by itself, while waiting for: $command" >&2; exit 1; }
    done
    ((SECONDS < end)) || { echo "never: $command" >&2; exit 1; }
    sleep 0.1
  done
}

until_true '[[ -s $folder/display ]]' $screen
DISPLAY=:$(cat "$folder/display")
export DISPLAY
export LC_ALL=C.UTF-8  # the windows are found by their titles

# window NAME: waits for the window and gives it the keyboard
window() {
  local id="" title="^$1\$"
  until_true 'id=$(timeout 10 xdotool search --onlyvisible --name "$title" | tail -n 1); [[ -n $id ]]' $screen "$program"
  timeout 10 xdotool windowfocus --sync "$id"
  echo "$id"
}

# picture NAME SCENARIO [KEY VALUE]...: the panel once the verdict's hold is over
picture() {
  local name=$1 scenario=$2
  shift 2
  while (($#)); do
    "$bin/orvalis" profile set "$1" "$2"
    shift 2
  done
  "$bin/orvalis-unit" --link "$folder/unit" --scenario "simulator/scenarios/$scenario.scenario" >/dev/null &
  local unit=$!
  until_true '[[ -e $folder/unit ]]' $unit
  "$bin/orvalis" --port "$folder/unit" 2>/dev/null &
  program=$!
  local id
  id=$(window Orvalis)
  sleep 15
  import -window "$id" "$out/$name.png"
  kill $program $unit
  wait $program $unit || true
  echo "$out/$name.png"
}

# The assistant of the first start, with the unit found.
"$bin/orvalis-unit" --link "$folder/unit" --scenario simulator/scenarios/clear.scenario >/dev/null &
unit=$!
"$bin/orvalis" 2>/dev/null &
program=$!
assistant=$(window "Orvalis Assistant")
sleep 2
xdotool key alt+p
xdotool type "$folder/unit"
xdotool key Tab alt+s
sleep 12 # two ports are tried
import -window "$assistant" "$out/assistant-unit.png"
echo "$out/assistant-unit.png"
kill $program $unit
wait $program $unit || true

"$bin/orvalis" profile set SafeHoldSeconds 2
picture panel-clear clear Centigrade True
picture panel-cloudy cloudy
picture panel-rain rain
picture panel-night clear NightTheme 1
"$bin/orvalis" profile set NightTheme 0
"$bin/orvalis" profile set SafeHoldSeconds 10

# The pages of the setup dialog, opened with the keyboard.
"$bin/orvalis" profile set AdvancedSetup True
"$bin/orvalis" --demo 2>/dev/null &
program=$!

window Orvalis >/dev/null
sleep 3
xdotool key alt+s
setup=$(window "Orvalis Setup")
for page in connection:alt+c panel:alt+p unit:alt+u safety:alt+f alerts:alt+a network:alt+n mqtt:alt+q \
  leftovers:alt+l; do
  xdotool key "${page#*:}"
  sleep 0.7
  import -window "$setup" "$out/setup-${page%%:*}.png"
  echo "$out/setup-${page%%:*}.png"
done

xdotool key Escape
window Orvalis >/dev/null
xdotool key alt+w
web=$(window "Orvalis Web Publishing")
sleep 3
import -window "$web" "$out/web-publishing.png"
echo "$out/web-publishing.png"

xdotool key Escape
window Orvalis >/dev/null
xdotool key alt+t
traffic=$(window "ASCOM API Traffic")
for name in Safe Clouds AmbientTemperature RelativeHumidity WindVelocity DewPoint Connected Name; do
  busctl --user get-property org.orvalis.Weather /org/orvalis/Weather org.orvalis.Weather "$name" >/dev/null 2>&1 || true
done
busctl --user set-property org.orvalis.Weather /org/orvalis/Weather org.orvalis.Weather Connected b false
busctl --user call org.orvalis.Weather /org/orvalis/Weather org.orvalis.Weather Halt
sleep 0.7
import -window "$traffic" "$out/traffic.png"
echo "$out/traffic.png"
kill $program
wait $program || true

# The graphs, of a simulated night.
python3 bench/night_frames.py "$bin/orvalis-unit" "$(date +%s%3N)" |
  build/bench/bin/history_fill "$folder/history.sqlite" >/dev/null
"$bin/orvalis" profile set Centigrade True
for theme in 0 1; do
  "$bin/orvalis" profile set NightTheme $theme
  "$bin/orvalis" 2>/dev/null &
  program=$!
  for graph in "temperatures:alt+g:Orvalis Temperatures" "wind:alt+h:Orvalis Wind and humidity" \
    "rain:alt+l:Orvalis Rain and light"; do
    IFS=: read -r name key title <<<"$graph"
    window Orvalis >/dev/null
    sleep 2
    xdotool key "$key"
    id=$(window "$title")
    xdotool mousemove --window "$id" 500 200
    sleep 1
    file=$out/graph-$name$( ((theme)) && echo -night || true).png
    import -window "$id" "$file"
    echo "$file"
    xdotool key ctrl+w
  done
  kill $program
  wait $program || true
done
