#!/usr/bin/env bash
# Three simulated domes, one MQTT broker and one Prometheus, all on this machine: start.sh [FOLDER [PORT]]
# FOLDER keeps their settings and data (default: a new one, removed at the end unless something failed). PORT is the
# first of five ports, for the three domes, the broker and Prometheus (default: 11111 to 11113, 1883, 9090). Ctrl+C ends
# them all.
# Needs orvalisd and orvalis-unit (in the PATH, or in the folder ORVALIS_BIN), mosquitto and prometheus.
set -euo pipefail
files=$(cd "$(dirname "$0")" && pwd)
[[ -z ${ORVALIS_BIN:-} ]] || PATH=$(cd "$ORVALIS_BIN" && pwd):$PATH
PATH=$PATH:/usr/sbin
for program in orvalisd orvalis-unit mosquitto prometheus; do
  command -v "$program" >/dev/null || { echo "$program is not installed" >&2; exit 1; }
done
scenarios=$files/../../simulator/scenarios
[[ -e $scenarios ]] || scenarios=/usr/share/orvalis/scenarios

folder=${1:-$(mktemp -d)}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
keep=${1:-}
failed() {
  keep=yes
  echo "$1; the logs are in $folder" >&2
  exit 1
}
ended() {
  trap - EXIT INT TERM
  kill $(jobs -p) 2>/dev/null || true
  wait
  if [[ -z $keep ]]; then rm -rf "$folder"; fi
}
trap ended EXIT
trap 'exit 0' INT TERM

domes=(A B C)
weather=(clear rain night)
ports=(11111 11112 11113 1883 9090)
if [[ -n ${2:-} ]]; then
  ports=("$2" $(($2 + 1)) $(($2 + 2)) $(($2 + 3)) $(($2 + 4)))
fi
cd "$folder"
cp "$files"/*.yml "$files"/mosquitto.conf .
sed -i "s/:11111/:${ports[0]}/; s/:11112/:${ports[1]}/; s/:11113/:${ports[2]}/" domes.yml
sed -i "s/^listener 1883/listener ${ports[3]}/" mosquitto.conf

mosquitto -c mosquitto.conf >mosquitto.log 2>&1 &
prometheus --config.file=prometheus.yml --storage.tsdb.path=prometheus --web.listen-address="127.0.0.1:${ports[4]}" \
  >prometheus.log 2>&1 &

for i in "${!domes[@]}"; do
  dome=dome-${domes[i]}
  set_key() { orvalisd profile set "$1" "$2" --profile "$dome"; }
  set_key Network/Station "Dome ${domes[i]}"
  set_key Network/Port "${ports[i]}"
  set_key Mqtt/Host 127.0.0.1
  set_key Mqtt/Port "${ports[3]}"
  set_key Mqtt/Enabled 1
  orvalis-unit --link "$folder/$dome.line" --scenario "$scenarios/${weather[i]}.scenario" >"$dome.unit.log" 2>&1 &
  until [[ -e $dome.line ]]; do
    kill -0 $! 2>/dev/null || failed "The unit of $dome has ended"
    sleep 0.1
  done
  orvalisd --port "$folder/$dome.line" --profile "$dome" >"$dome.log" 2>&1 &
  echo "Dome ${domes[i]}: http://127.0.0.1:${ports[i]}/"
done
echo "Prometheus: http://127.0.0.1:${ports[4]}/alerts"
echo "MQTT: mosquitto_sub -p ${ports[3]} -v -t 'orvalis/#'"
wait -n || true
failed "One of them has ended"
