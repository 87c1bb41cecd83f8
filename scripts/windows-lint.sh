#!/usr/bin/env bash
# clang-tidy for the Windows-only sources; run after scripts/build.sh windows.
set -euo pipefail
cd "$(dirname "$0")/.."
mingw=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++
# The generated header declares the class that clients create, by the name that the logic has for its object.
options=(--extra-arg=--target=x86_64-w64-mingw32 --checks=-bugprone-forward-declaration-namespace)
for folder in "$mingw" "$mingw/x86_64-w64-mingw32" /usr/x86_64-w64-mingw32/include; do
  options+=("--extra-arg=-isystem$folder")
done
printf '%s\0' src/platform/windows/*.cpp src/platform/windows/com/*.cpp |
  xargs -0 -P "$(nproc)" -n 4 clang-tidy -p build/windows --quiet "${options[@]}" 2>/dev/null
echo "windows-lint: no findings"
