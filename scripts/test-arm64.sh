#!/usr/bin/env bash
# Cross-builds orvalisd, orvalis and orvalis-unit for arm64, the Raspberry Pi's, into build/arm64, and runs them under
# qemu-user: scripts/test-arm64.sh [TARGET...]. Compiler and libraries are in a root of their own, kept in
# ~/.cache/orvalis. Needs root, for systemd-nspawn.
set -euo pipefail
cd "$(dirname "$0")/.."
targets=("$@")
((${#targets[@]})) || targets=(orvalisd orvalis orvalis-unit)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/orvalis
root=$cache/arm64-cross
libraries=(qt6-base-dev qt6-multimedia-dev qt6-serialport-dev libgl-dev libcurl4-openssl-dev libqcustomplot-dev
  libsqlite3-dev libmosquitto-dev)
if [[ ! -d $root ]]; then
  mkdir -p "$cache"
  include=$(printf '%s:arm64,' "${libraries[@]}")crossbuild-essential-arm64,cmake,ninja-build,cmark-gfm,git
  include+=,qt6-base-dev-tools,libboost1.81-dev,nlohmann-json3-dev,qemu-user-static
  rm -rf "$root.new"
  mmdebstrap --variant=minbase --format=dir --architectures=amd64,arm64 --include="$include" bookworm "$root.new"
  mv "$root.new" "$root"
fi
inside() {
  env SYSTEMD_LOG_LEVEL=crit systemd-nspawn --quiet --register=no --keep-unit --machine=orvalis-arm64 --pipe --private-network \
    --bind="$PWD:/orvalis" --chdir=/orvalis -D "$root" env -i PATH=/usr/bin:/bin HOME=/root LC_ALL=C.UTF-8 "$@"
}
inside cmake -S . -B build/arm64 -G Ninja --toolchain cmake/arm64/toolchain.cmake -DCMAKE_BUILD_TYPE=Release \
  -DORVALIS_TESTS=OFF -DORVALIS_BENCH=OFF >build/arm64-configure.log || { tail -30 build/arm64-configure.log >&2; exit 1; }
inside ninja -C build/arm64 "${targets[@]}"
for target in "${targets[@]}"; do
  file -b "build/arm64/bin/$target" | grep -q 'ARM aarch64'
  inside qemu-aarch64-static "build/arm64/bin/$target" --version
done

# A reading of the simulated unit through the program, both on the other processor.
for program in orvalisd orvalis; do
  [[ " ${targets[*]} " == *" $program "* && " ${targets[*]} " == *" orvalis-unit "* ]] || continue
  inside bash -c "
    qemu-aarch64-static build/arm64/bin/orvalis-unit --link /tmp/unit --fast >/dev/null &
    unit=\$!
    until [[ -L /tmp/unit ]]; do kill -0 \$unit || exit 1; sleep 0.2; done
    ORVALIS_HTTP_PORT=0 timeout 60 qemu-aarch64-static build/arm64/bin/$program $([[ $program == orvalis ]] && echo --headless) \
      --json --port /tmp/unit --profile /tmp/profile | grep -m1 '\"ambient_c\":[0-9-]'
    kill \$unit"
done
echo "all is well"
