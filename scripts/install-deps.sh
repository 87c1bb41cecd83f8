#!/usr/bin/env bash
# Installs the Debian packages that are missing for the named purposes: build, test, package, lint, windows. Does
# nothing when nothing is missing; uses sudo only if the user is not root.
set -euo pipefail

declare -A packages=(
  [build]="cmake g++ make ninja-build qt6-base-dev qt6-multimedia-dev qt6-serialport-dev libgl-dev libcurl4-openssl-dev
    libqcustomplot-dev libsqlite3-dev libmosquitto-dev libboost1.81-dev nlohmann-json3-dev
    libindi-dev cmark-gfm qt6-l10n-tools"
  [test]="libgtest-dev libgmock-dev libbenchmark-dev python3 xvfb xauth imagemagick xdotool
    libsystemd-dev pkg-config dbus-daemon libglib2.0-bin python3-dbus python3-gi systemd vsftpd wrk nodejs
    mosquitto mosquitto-clients prometheus openssl indi-bin"
  [package]="dpkg-dev file"
  [lint]="clang-format clang-tidy clang libclang-rt-dev llvm python3 qt6-l10n-tools"
  [windows]="g++-mingw-w64-x86-64-posix mingw-w64-tools qt6-base-dev-tools qt6-l10n-tools googletest dpkg-dev tcl wine wine64 wine64-tools
    libwine-dev fonts-wine nsis
    xvfb xdotool"
)

missing=()
for purpose in "$@"; do
  for package in ${packages[$purpose]:?"unknown purpose: $purpose"}; do
    status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null || true)
    [[ $status == "install ok installed" ]] || missing+=("$package")
  done
done
((${#missing[@]})) || exit 0

as_root=()
if [[ $(id -u) -ne 0 ]]; then
  command -v sudo >/dev/null || {
    echo "These packages are missing, and there is no sudo to install them with: ${missing[*]}" >&2
    exit 1
  }
  as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
