#!/usr/bin/env bash
# Every fault against the real program, then at random; see docs/reliability.md. Options go to tests/soak/soak.py.
set -euo pipefail
cd "$(dirname "$0")/.."
export ORVALIS_BIN=$PWD/build/dev/bin PYTHONDONTWRITEBYTECODE=1
exec python3 -W ignore::ResourceWarning tests/soak/soak.py "$@"
