#!/usr/bin/env bash
# Builds what the Windows program is linked with - Qt, QCustomPlot, SQLite and, for the tests, GoogleTest - from the
# sources of Debian's packages, into a folder of the user's cache. It does so once: the folder is named after the
# contents of this script and of cmake/windows, and build/windows-qt points to it. About ten minutes on two cores.
set -euo pipefail
cd "$(dirname "$0")/.."

key=$(cat scripts/windows-qt.sh cmake/windows/* | sha256sum | cut -c 1-12)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/orvalis
prefix=$cache/windows-$key
work=$cache/windows.work
log=$cache/windows.log
mkdir -p build "$cache"

# One at a time, and nothing half built is taken for the whole: the stamp comes last.
exec 9>"$cache/windows.lock"
flock 9
if [[ -e $prefix/complete ]]; then
  ln -sfn "$prefix" build/windows-qt
  exit 0
fi

rm -rf "$work" "$prefix"
mkdir -p "$work" "$prefix"
: >"$log"
# Copies: what is built here remembers their places, and outlives this checkout.
cp cmake/windows/toolchain.cmake "$prefix/toolchain.cmake"
toolchain=$prefix/toolchain.cmake
libraries=$PWD/cmake/windows
echo "Building Qt and its companions for Windows, once; the log is $log"
trap '(($?)) && tail -n 30 "$log" >&2' EXIT

# Debian's sources, by lists of our own: the machine's need not name any, and no rights are needed.
apt=(-o "Dir::State::Lists=$work/lists" -o "Dir::Cache=$work/cache" -o "Dir::Etc::SourceList=$work/sources.list"
  -o Dir::Etc::SourceParts=/dev/null)
get_sources() {
  local mirror=${ORVALIS_DEBIAN_MIRROR:-http://deb.debian.org/debian}
  mkdir -p "$work/lists/partial" "$work/cache/archives/partial"
  echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $mirror bookworm main" >"$work/sources.list"
  echo "  fetching the sources"
  (cd "$work" && apt-get "${apt[@]}" update -q && apt-get "${apt[@]}" source -q "$@") >>"$log" 2>&1
}

# build FOLDER: with the count of steps where somebody is looking
build() {
  if [[ -t 1 ]]; then
    NINJA_STATUS='  [%f/%t] ' nice cmake --build "$1" 2>>"$log" | tee -a "$log" | cut -c -100
  else
    nice cmake --build "$1" >>"$log" 2>&1
  fi
  cmake --install "$1" >>"$log" 2>&1
}

for_windows=(-G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel "-DCMAKE_INSTALL_PREFIX=$prefix" -DBUILD_SHARED_LIBS=OFF)
host=(-DQT_HOST_PATH=/usr "-DQT_HOST_PATH_CMAKE_DIR=/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake")
if command -v ccache >/dev/null; then
  for_windows+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

get_sources qt6-base qcustomplot sqlite3

# Left out: what the program does not use, and what Debian's sources or mingw's headers lack (tablets, Direct2D).
off=(sql dbus xml concurrent testlib openssl vulkan direct2d directwrite3 tabletevent system_zlib pkg_config)
off=("${off[@]/#/-DFEATURE_}")
echo "  Qt"
cmake -S "$work"/qt6-base-* -B "$work/qt" "${for_windows[@]}" "${host[@]}" "-DCMAKE_TOOLCHAIN_FILE=$toolchain" \
  -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no "${off[@]/%/=OFF}" >>"$log" 2>&1
build "$work/qt"

echo "  QCustomPlot and SQLite"
(cd "$work"/sqlite3-* && ./configure --disable-tcl && make sqlite3.c sqlite3.h) >>"$log" 2>&1
cmake -S "$libraries" -B "$work/libraries" "${for_windows[@]}" "${host[@]}" \
  "-DCMAKE_TOOLCHAIN_FILE=$prefix/lib/cmake/Qt6/qt.toolchain.cmake" \
  "-DQCUSTOMPLOT_SOURCE=$(echo "$work"/qcustomplot-*)" "-DSQLITE_SOURCE=$(echo "$work"/sqlite3-*)" >>"$log" 2>&1
build "$work/libraries"

echo "  GoogleTest"
cmake -S /usr/src/googletest -B "$work/googletest" "${for_windows[@]}" "-DCMAKE_TOOLCHAIN_FILE=$toolchain" >>"$log" 2>&1
build "$work/googletest"

rm -rf "$work"
touch "$prefix/complete"
ln -sfn "$prefix" build/windows-qt
