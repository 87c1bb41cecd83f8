#!/usr/bin/env bash
# Builds a release from a clean clone of the checked-out commit: the Debian packages, the Windows installer and their
# checksums, in build/release-VERSION/. docs/releasing.md lists the other steps.
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
cp "$clone"/orvalis/build/release/*.{deb,ddeb} "$clone"/orvalis/build/windows/orvalis-*-setup.exe "$output"
(cd "$output" && sha256sum -- * >SHA256SUMS)
cat "$output/SHA256SUMS"
