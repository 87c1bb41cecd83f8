#!/usr/bin/env bash
# Runs the tests of the Windows build under Wine. The simulated unit remains a Linux program.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
cmake --build --preset dev --target orvalis-unit
export ORVALIS_BIN=$PWD/build/dev/bin
exec scripts/with-wine.sh ctest --preset windows "$@"
