#!/usr/bin/env bash
# Configures and builds one preset: scripts/build.sh dev|release|asan|fuzz|bench|windows
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
log=build/$preset/configure.log
mkdir -p "build/$preset"
if ! cmake --preset "$preset" >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
cmake --build --preset "$preset"
