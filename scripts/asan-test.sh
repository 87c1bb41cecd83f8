#!/usr/bin/env bash
# The tests under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
# Qt and fontconfig keep some memory until exit.
export ASAN_OPTIONS=detect_stack_use_after_return=1
export LSAN_OPTIONS=suppressions=$PWD/tests/support/leaks.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
ctest --preset asan
