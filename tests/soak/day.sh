#!/usr/bin/env bash
# Twenty-four hours of the optimised orvalisd under a heap profiler, in half an hour: the clocks of the program and of the
# simulated unit run 48 times as fast. Clients ask and listen all the while, and a broker is sent everything. Prints its
# memory and its heap over the time.
#   tests/soak/day.sh [HOURS] [SPEED]
# Needs Debian's heaptrack, mosquitto, curl and dbus, and scripts/build.sh bench.
set -euo pipefail
cd "$(dirname "$0")/../.."
hours=${1:-24}
speed=${2:-48}
bin=${ORVALIS_BIN:-$PWD/build/bench/bin}
[[ -n ${DBUS_SESSION_BUS_ADDRESS:-} ]] || exec dbus-run-session -- "$0" "$hours" "$speed"

folder=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; wait; echo "what it left is in $folder"' EXIT
export FAST_CLOCK=$speed
g++ -O2 -Wall -shared -fPIC -o "$folder/fast_clock.so" tests/soak/fast_clock.cpp
export ORVALIS_PROFILE_DIR=$folder/profile
http=$((20000 + RANDOM % 4000)) mqtt=$((25000 + RANDOM % 4000))

/usr/sbin/mosquitto -p "$mqtt" >"$folder/broker.log" 2>&1 &
LD_PRELOAD=$folder/fast_clock.so "$bin/orvalis-unit" --link "$folder/unit" --fault garbage:0.001 --fault cut:0.001 >/dev/null &
for setting in g_lFullLog=1 g_sFullLogPath="$folder" g_lOneLineLog=1 g_sOneLineLogPath="$folder" Mqtt/Enabled=1 \
  Mqtt/Host=localhost Mqtt/Port="$mqtt" Mqtt/HomeAssistant=1; do
  "$bin/orvalisd" profile set "${setting%%=*}" "${setting#*=}"
done
# Two days of history, so that the memory kept for it is full from the start.
python3 bench/night_frames.py "$bin/orvalis-unit" "$(date +%s%3N)" >"$folder/night"
for ago in 4 3 2 1 0; do
  awk -v "shift=$((ago * 36000000))" '{ $1 = sprintf("%.0f", $1 - shift); print }' "$folder/night"
done | "$bin/history_fill" "$folder/profile/history.sqlite" >/dev/null
mkfifo "$folder/heap"
gzip -1 <"$folder/heap" >"$folder/heap.raw.gz" &
DUMP_HEAPTRACK_OUTPUT=$folder/heap ORVALIS_HTTP_PORT=$http \
  LD_PRELOAD=/usr/lib/heaptrack/libheaptrack_preload.so:$folder/fast_clock.so "$bin/orvalisd" --json --port "$folder/unit" \
  >"$folder/events.json" 2>"$folder/errors.log" &
program=$!

ask() { curl --silent --max-time 5 "http://127.0.0.1:$http$1" >/dev/null || true; }
for path in /observation/stream /observation/stream; do
  (while kill -0 $program 2>/dev/null; do curl --silent --no-buffer --max-time 60 "http://127.0.0.1:$http$path"; done \
    >/dev/null) &
done
seconds=$((hours * 3600 / speed))
end=$((SECONDS + seconds))
while ((SECONDS < end)) && kill -0 $program 2>/dev/null; do
  ask "/api/v1/safetymonitor/0/issafe?ClientID=1&ClientTransactionID=2"
  ask /observation
  ask /metrics
  ask "/history?from=-43200&points=400"
  ask "/damaged%"
  gdbus call --session --dest org.orvalis.Weather --object-path /org/orvalis/Weather \
    --method org.freedesktop.DBus.Properties.GetAll org.orvalis.Observation1 >/dev/null 2>&1 || true
  printf '%6d s  %s\n' $((SECONDS + seconds - end)) "$(grep -E 'VmRSS|RssAnon' /proc/$program/status | tr -s '\t\n' ' ')"
  sleep 1
done >"$folder/memory"
kill $program
code=0
wait $program || code=$?
echo "orvalisd ended with $code; $(grep -c '"frame"' "$folder/events.json") readings"
awk 'NR % 60 == 1' "$folder/memory"
echo "bytes allocated, by the hour:"
sleep 2 # for the last of it
zcat "$folder/heap.raw.gz" | /usr/lib/heaptrack/libexec/heaptrack_interpret | python3 tests/soak/heap_by_hour.py
