#!/usr/bin/env bash
# Lists our C++ sources, NUL-separated: what is formatted and checked.
cd "$(dirname "$0")/.." && git ls-files -z -co --exclude-standard -- '*.cpp' '*.h'
