#!/usr/bin/env bash
# Cross-builds orvalisd, orvalis and orvalis-unit for arm64, the Raspberry Pi's, into build/arm64, and runs them under
# qemu-user. Compiler and libraries are in a root of their own, kept in ~/.cache/orvalis. Needs root, for systemd-nspawn.
set -euo pipefail
cd "$(dirname "$0")/.."
programs=(orvalisd orvalis orvalis-unit)
root=${XDG_CACHE_HOME:-$HOME/.cache}/orvalis/arm64-cross
libraries=(qt6-base-dev qt6-multimedia-dev qt6-serialport-dev libgl-dev libcurl4-openssl-dev libqcustomplot-dev
  libsqlite3-dev libmosquitto-dev)
include=$(printf '%s:arm64,' "${libraries[@]}")crossbuild-essential-arm64,cmake,ninja-build,cmark-gfm,git
include+=,qt6-base-dev-tools,qt6-l10n-tools,libboost1.81-dev,nlohmann-json3-dev,qemu-user-static,dbus,fonts-dejavu-core
if [[ $(cat "$root/included" 2>/dev/null) != "$include" ]]; then
  mkdir -p "$(dirname "$root")"
  rm -rf "$root.new"
  mmdebstrap --variant=minbase --format=dir --architectures=amd64,arm64 --include="$include" bookworm "$root.new"
  echo "$include" >"$root.new/included"
  rm -rf --one-file-system "$root"
  mv "$root.new" "$root"
fi
inside() {
  env SYSTEMD_LOG_LEVEL=crit systemd-nspawn --quiet --register=no --keep-unit --machine=orvalis-arm64 --pipe --private-network \
    --bind="$PWD:/orvalis" --chdir=/orvalis -D "$root" env -i PATH=/usr/bin:/bin HOME=/root LC_ALL=C.UTF-8 "$@"
}
inside cmake -S . -B build/arm64 -G Ninja --toolchain cmake/arm64/toolchain.cmake -DCMAKE_BUILD_TYPE=Release \
  -DORVALIS_TESTS=OFF -DORVALIS_BENCH=OFF >build/arm64-configure.log || { tail -30 build/arm64-configure.log >&2; exit 1; }
inside ninja -C build/arm64 "${programs[@]}"
for program in "${programs[@]}"; do
  file -b "build/arm64/bin/$program" | grep -q 'ARM aarch64'
done
rm -f build/arm64/panel.png

# Unit and programs, all of the other processor, until each says that it is safe; with a network and a bus of their own.
inside dbus-run-session bash -euo pipefail -s <<'INSIDE'
cd build/arm64/bin
work=$(mktemp -d)
within() { # SECONDS COMMAND...: until it succeeds
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    ((SECONDS < end)) || { echo "FAILED, never: $*" >&2; exit 1; }
    sleep 0.5
  done
}
observation() {
  (exec 3<>/dev/tcp/127.0.0.1/11111; printf 'GET /observation HTTP/1.0\r\nHost: localhost\r\n\r\n' >&3; tail -1 <&3) 2>/dev/null
}
safe() { [[ $(observation) == *'"source":"unit"'*'"safe":true'* ]]; }
property() { # NAME
  dbus-send --session --print-reply --dest=org.orvalis.Weather /org/orvalis/Weather \
    org.freedesktop.DBus.Properties.Get string:org.orvalis.Observation1 "string:$1"
}

qemu=qemu-aarch64-static
$qemu orvalis-unit --version </dev/null
$qemu orvalis-unit --fast --link "$work/unit" >/dev/null &
unit=$!
within 30 test -e "$work/unit"
for start in orvalisd "orvalis --headless"; do
  $qemu $start --version </dev/null
  $qemu $start --port "$work/unit" --profile "$work/profile" >/dev/null &
  program=$!
  within 90 safe
  echo "HTTP: $(observation | cut -c1-200)"
  property Safe | grep 'boolean true'
  property Values | grep -A1 ambient_c
  kill "$program"
  wait "$program"
done
export QT_QPA_PLATFORM=offscreen
$qemu orvalis --port "$work/unit" --profile "$work/profile" --picture ../panel.png </dev/null
kill "$unit"
INSIDE
file build/arm64/panel.png
echo "all is well"
