#!/usr/bin/env bash
# Builds the MQTT library of the Windows program from the source of Debian's package, once, beside what
# scripts/windows-qt.sh builds: build/windows-mosquitto points to it. Static, for one thread, and without TLS, for which
# Debian has no library for Windows.
set -euo pipefail
cd "$(dirname "$0")/.."

key=$(cat scripts/windows-mosquitto.sh cmake/windows/toolchain.cmake | sha256sum | cut -c 1-12)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/orvalis
prefix=$cache/mosquitto-$key
work=$cache/mosquitto.work
log=$cache/mosquitto.log
mkdir -p build "$cache"

# One at a time, and nothing half built is taken for the whole: the stamp comes last.
exec 9>"$cache/mosquitto.lock"
flock 9
if [[ -e $prefix/complete ]]; then
  ln -sfn "$prefix" build/windows-mosquitto
  exit 0
fi

rm -rf "$work" "$prefix"
mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$prefix/lib" "$prefix/include"
: >"$log"
echo "Building libmosquitto for Windows, once; the log is $log"
trap '(($?)) && tail -n 30 "$log" >&2' EXIT

# Debian's sources, by lists of our own: the machine's need not name any, and no rights are needed.
apt=(-o "Dir::State::Lists=$work/lists" -o "Dir::Cache=$work/cache" -o "Dir::Etc::SourceList=$work/sources.list"
  -o Dir::Etc::SourceParts=/dev/null)
mirror=${ORVALIS_DEBIAN_MIRROR:-http://deb.debian.org/debian}
echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $mirror bookworm main" >"$work/sources.list"
(cd "$work" && apt-get "${apt[@]}" update -q && apt-get "${apt[@]}" source -q mosquitto) >>"$log" 2>&1

off=(TLS THREADING SOCKS CJSON CLIENTS BROKER APPS PLUGINS LIB_CPP)
off=("${off[@]/#/-DWITH_}")
cmake -S "$work"/mosquitto-*/ -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel \
  "-DCMAKE_TOOLCHAIN_FILE=$PWD/cmake/windows/toolchain.cmake" -DWITH_STATIC_LIBRARIES=ON -DDOCUMENTATION=OFF \
  "${off[@]/%/=OFF}" >>"$log" 2>&1
nice cmake --build "$work/build" --target libmosquitto_static >>"$log" 2>&1
cp "$work/build/lib/libmosquitto_static.a" "$prefix/lib/libmosquitto.a"
cp "$work"/mosquitto-*/include/{mosquitto,mqtt_protocol}.h "$prefix/include/"

rm -rf "$work"
touch "$prefix/complete"
ln -sfn "$prefix" build/windows-mosquitto
