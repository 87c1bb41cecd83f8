#!/usr/bin/env bash
# Fails on unformatted sources and on includes that point upwards.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/sources.sh | xargs -0 clang-format --dry-run --Werror
scripts/check-layers.py
