#!/usr/bin/env bash
# The quick checks before every commit: no windows, no processes, no waiting.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/check-sources.sh
cmake --preset dev >/dev/null
cmake --build --preset dev --target logic_test history_store_test
build/dev/bin/logic_test --gtest_brief=1
build/dev/bin/history_store_test --gtest_brief=1
