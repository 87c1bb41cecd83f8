#!/usr/bin/env bash
# Installs the packages of `make package` in clean Debian 12 roots, uses them, upgrades, removes and purges them:
#
#     scripts/test-packages.sh [FOLDER [OLDER]]
#
# FOLDER has the packages, by default build/release. OLDER has those of an older version to upgrade from; without it the
# same programs are packed once more under a lower version number. Needs root, for
# systemd-nspawn, which boots one of them. The bare root and what apt downloads are kept in ~/.cache/orvalis.
set -euo pipefail
cd "$(dirname "$0")/.."
packages=$(realpath "${1:-build/release}")
older=${2:-}
cache=${XDG_CACHE_HOME:-$HOME/.cache}/orvalis
work=$(mktemp -d)

machine=

finish() {
  [[ -z $machine ]] || halt
  rm -rf --one-file-system "$work"
}
trap finish EXIT
say() { echo "== $*"; }
fail() { echo "FAILED: $*" >&2; exit 1; }
within() { # SECONDS COMMAND...: until it succeeds
  local end=$((SECONDS + $1))
  shift
  until "$@"; do
    ((SECONDS < end)) || fail "never: $*"
    sleep 0.5
  done
}

make_root() { # NAME
  root=$work/$1
  local bare=$cache/debian-12.tar
  mkdir -p "$cache/archives/partial" "$root"
  if [[ ! -f $bare ]]; then
    mmdebstrap --variant=minbase --format=tar --include=ca-certificates,dbus,systemd,systemd-sysv,udev bookworm "$bare.new"
    mv "$bare.new" "$bare"
  fi
  tar -C "$root" -xf "$bare"
  inside apt-get update -q >/dev/null
}
nspawn=(env SYSTEMD_LOG_LEVEL=crit systemd-nspawn --quiet --register=no --keep-unit --machine=orvalis-test)
variables=(PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive)
# In the root as it is, or in the machine that was booted from it.
inside() {
  if [[ -n $machine ]]; then
    nsenter --target "$(pgrep -P "$machine")" --all env -i "${variables[@]}" "$@"
  else
    "${nspawn[@]}" --pipe --resolv-conf=copy-host --bind="$cache/archives:/var/cache/apt/archives" -D "$root" \
      env -i "${variables[@]}" "$@"
  fi
}
# With a network of its own, in which ports are free.
boot() {
  "${nspawn[@]}" --private-network --boot -D "$root" </dev/null >"$work/boot.log" 2>&1 &
  machine=$!
  within 60 inside systemctl is-active -q multi-user.target 2>/dev/null
}
halt() {
  kill -RTMIN+4 "$(pgrep -P "$machine")" || true  # power off
  wait "$machine" || true
  machine=
}
install_from() { # FOLDER PACKAGE...
  local folder=$1 files=()
  shift
  rm -rf "$root/packages"
  mkdir "$root/packages"
  for package in "$@"; do
    cp "$folder/${package}"_*.deb "$root/packages/"
    files+=("/packages/$(basename "$folder/${package}"_*.deb)")
  done
  inside apt-get install -y -q --no-install-recommends "${files[@]}" >"$work/apt.log" 2>&1 ||
    { tail -20 "$work/apt.log" >&2; fail "apt-get install ${files[*]}"; }
  rm -rf "$root/packages"
}
files_of_root() {
  find "$root" -xdev \( -path "$root/var/lib/dpkg" -o -path "$root/var/lib/apt" -o -path "$root/var/lib/systemd" \
    -o -path "$root/var/log" -o -path "$root/var/cache" -o -path "$root/run" -o -path "$root/tmp" \
    -o -path "$root/var/tmp" -o -path "$root/dev" \) -prune -o -printf '%P\n' | sort
  (cd "$root" && find var/log/orvalis* var/lib/systemd/*orvalis* 2>/dev/null) || true
}
purge() { # PACKAGE...: removed or not, and what came with them
  inside dpkg --purge "$@" >"$work/apt.log" 2>&1 || { tail "$work/apt.log" >&2; fail "dpkg --purge"; }
  inside apt-get autoremove -y -q --purge >"$work/apt.log" 2>&1
}
# Caches of the system that list what is installed, and the service's user, which stays by Debian's rules.
leftovers() {
  comm -13 "$work/before" <(files_of_root | sort) |
    { grep -vE '^(var/lib/dbus/machine-id|etc/(ld.so.cache|machine-id|(passwd|group|g?shadow)-?|.*\.wants)|root(/.*)?)$' || (($? == 1)); }
}

if [[ -z $older ]]; then
  older=$work/older
  mkdir "$older"
  say "older packages: the same programs, packed as version 0.0.9"
  (cd build/release && cpack -B "$older" -R 0.0.9 >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log"; exit 1; }
fi

say "a machine without a desktop"
make_root daemon
files_of_root | sort >"$work/before"
install_from "$older" orvalisd orvalis-unit
inside dpkg-query -W -f '${Package} ${Version}\n' orvalisd
if inside dpkg-query -W libqt6gui6 >/dev/null 2>&1; then fail "orvalisd brings a window system"; fi
id=$(inside id orvalis) || fail "no user of the service"
[[ $id == *dialout* ]] || fail "the service may not use serial ports: $id"
service_profile() { inside runuser -u orvalis -- orvalisd profile "$@" --profile /var/lib/orvalis; }
inside install -d -m 0700 -o orvalis -g orvalis /var/lib/orvalis
service_profile set TempsAvgCount 7
inside orvalisd profile set TempsAvgCount 9 --profile /root/profile
logs=$(inside orvalisd profile get g_sFullLogPath --profile /root/profile)
[[ $logs == /root/.local/share/orvalis ]] || fail "root's logs are in $logs"

say "upgrade"
install_from "$packages" orvalisd orvalis-unit
inside dpkg-query -W -f '${Package} ${Version}\n' orvalisd
[[ $(service_profile get TempsAvgCount) == 7 ]] || fail "the service lost its settings"
[[ $(inside orvalisd profile get TempsAvgCount --profile /root/profile) == 9 ]] || fail "a user lost settings"
inside systemd-analyze verify --man=no orvalisd.service orvalis-program.socket orvalis-program@1.service
inside systemd-analyze security --offline=true --threshold=30 orvalisd.service | tail -1

say "the service, with a simulated unit and a program that closes a roof"
cat >"$root/usr/local/bin/close-roof" <<'PROGRAM'
#!/bin/sh
echo "closing: $ORVALIS_ALERT $ORVALIS_REASONS as $(id -un)"
sleep 15
echo closed >>/var/tmp/roof
PROGRAM
chmod 755 "$root/usr/local/bin/close-roof"
boot
service_profile set "COM Port" /var/lib/orvalis/unit
service_profile set AutoConnect 1
service_profile set ForceUnsafe 1
service_profile set UnsafeApp /usr/local/bin/close-roof
inside systemd-run -q --uid=orvalis --unit=simulated orvalis-unit --fast --link /var/lib/orvalis/unit
inside systemctl enable -q --now orvalisd
observation() { inside bash -c 'exec 3<>/dev/tcp/127.0.0.1/11111; printf "GET /observation HTTP/1.0\r\nHost: localhost\r\n\r\n" >&3; cat <&3'; }
served() { observation 2>/dev/null | grep -q '"source": *"unit"'; }
within 30 served
say "HTTP: $(observation | tail -1 | cut -c1-100)"
on_bus() { # USER METHOD ARGUMENTS...
  local user=$1
  shift
  inside runuser -u "$user" -- dbus-send --system --print-reply \
    --dest=org.orvalis.Weather /org/orvalis/Weather "$@" 2>&1
}
of=org.freedesktop.DBus.Properties
answer=$(on_bus nobody $of.Get string:org.orvalis.Observation1 string:Safe) || fail "D-Bus: $answer"
say "D-Bus, any user: Safe is$(tail -1 <<<"$answer")"
command=($of.Set string:org.orvalis.Weather string:Connected variant:boolean:true)
if answer=$(on_bus nobody "${command[@]}"); then fail "any user may command the service"; fi
[[ $answer == *AccessDenied* ]] || fail "$answer"
answer=$(on_bus orvalis "${command[@]}") || fail "the group dialout may not command the service: $answer"

property() { inside systemctl show -P "$1" orvalisd; }
closing() { inside journalctl -q -o cat -u 'orvalis-program@*' | grep '^closing'; }
within 20 closing
say "crash while the roof closes"
inside systemctl kill -s SEGV --kill-who=main orvalisd
restarted() { (($(property NRestarts) >= $1)) && [[ $(property ActiveState) == active ]]; }
within 30 restarted 1
within 30 served
within 30 grep -qs closed "$root/var/tmp/roof"
within 5 eval 'inside journalctl -q -o cat -u orvalisd -p warning | grep -q "UNSAFE ("'
say "a hang"
mkdir -p "$root/etc/systemd/system/orvalisd.service.d"
printf '[Service]\nWatchdogSec=4\n' >"$root/etc/systemd/system/orvalisd.service.d/test.conf"
inside systemctl daemon-reload
inside systemctl restart orvalisd
inside systemctl stop simulated  # a silent unit is no hang
sleep 10
[[ $(property NRestarts) == 0 ]] || fail "started again without a reason"
inside systemctl kill -s STOP --kill-who=main orvalisd
within 60 restarted 1
say "systemctl status: $(property StatusText)"
rm -r "$root/etc/systemd/system/orvalisd.service.d"
[[ -s $root/var/log/orvalis/orvalis_errors.txt ]] || fail "no log in /var/log/orvalis"

say "remove, then purge"
inside apt-get remove -y -q orvalisd orvalis-unit >"$work/apt.log" 2>&1 || { tail "$work/apt.log"; fail "apt-get remove"; }
if inside systemctl is-active -q orvalisd; then fail "it runs on without its package"; fi
[[ ! -e $root/usr/bin/orvalisd && -s $root/var/lib/orvalis/Orvalis.Weather.ini ]] || fail "removing removes too much or too little"
purge orvalisd orvalis-unit
halt
rm -f "$root/usr/local/bin/close-roof" "$root/var/tmp/roof"
rest=$(leftovers)
[[ -z $rest ]] || fail "left over: $rest"
[[ -s $root/root/profile/Orvalis.Weather.ini ]] || fail "a user's settings are gone"
say "what stays: the user orvalis, and users' own settings and logs"

say "a machine with a desktop"
make_root desktop
install_from "$packages" orvalis indi-orvalis
inside useradd -m observer
as_observer=(runuser -u observer -- env HOME=/home/observer)
inside "${as_observer[@]}" QT_QPA_PLATFORM=offscreen orvalis --demo --picture /home/observer/panel.png 2>/dev/null
[[ -s $root/home/observer/panel.png ]] || fail "no picture of the panel"
# The bus starts it, as its file says.
answer=$(inside "${as_observer[@]}" dbus-run-session -- dbus-send --session --print-reply --reply-timeout=30000 --dest=org.orvalis.Weather \
  /org/orvalis/Weather org.freedesktop.DBus.Properties.Get string:org.orvalis.Weather string:Name 2>&1) || fail "$answer"
say "D-Bus starts the program: $(tail -1 <<<"$answer")"
inside test -x /usr/bin/indi_orvalis_weather || fail "no INDI driver"
purge orvalis indi-orvalis
if find "$root/usr" "$root/etc" "$root/var/lib" -iname '*orvalis*' | grep .; then fail "left over"; fi
say "all is well"
