#!/usr/bin/env bash
# The tests under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
# What Qt and fontconfig keep until the end of the process is not ours to free.
export ASAN_OPTIONS=detect_stack_use_after_return=1
export LSAN_OPTIONS=suppressions=$PWD/tests/support/leaks.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1
ctest --preset asan
