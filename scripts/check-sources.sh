#!/usr/bin/env bash
# Fails on unformatted sources, on includes that point upwards, and on texts without a translation.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/sources.sh | xargs -0 clang-format --dry-run --Werror
scripts/check-layers.py
scripts/translations.sh
