#!/usr/bin/env bash
# Builds what is given to users from a clean clone of the commit that is checked out: the Debian packages, the Windows
# installer and their checksums, in build/release-VERSION/. docs/releasing.md has the steps around it.
set -euo pipefail
cd "$(dirname "$0")/.."
version=$(sed -nE 's/^project\(Orvalis VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
if ! grep -q "^## $version " CHANGELOG.md; then
  echo "CHANGELOG.md has no section \"## $version (date)\"" >&2
  exit 1
fi
clone=$(mktemp -d)
trap 'rm -rf "$clone"' EXIT
git clone -q . "$clone/orvalis"
output=$PWD/build/release-$version
rm -rf "$output"
mkdir -p "$output"
make -C "$clone/orvalis" package installer
cp "$clone"/orvalis/build/release/*.deb "$clone"/orvalis/build/windows/orvalis-*-setup.exe "$output"
(cd "$output" && sha256sum -- * >SHA256SUMS)
cat "$output/SHA256SUMS"
