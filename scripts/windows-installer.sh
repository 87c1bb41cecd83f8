#!/usr/bin/env bash
# Builds build/windows/orvalis-VERSION-setup.exe from the output of `make windows`.
set -euo pipefail
cd "$(dirname "$0")/.."
version=$(sed -nE 's/^project\(Orvalis VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
output=$PWD/build/windows/orvalis-$version-setup.exe
makensis -V2 "-DVERSION=$version" "-DEXECUTABLE=$PWD/build/windows/bin/orvalis.exe" "-DDOCS=$PWD/build/windows/share/doc/orvalis" \
  "-DLICENSE=$PWD/LICENSE" "-DOUTPUT=$output" packaging/windows-installer.nsi
echo "$output"
