#!/usr/bin/env bash
# Cross-builds the Qt-free core (document, retrieval, sheets and the platform seam under them) and
# its tests for 64-bit Windows with MinGW-w64, runs the tests under Wine and ends in CTest's
# summary. Installs the cross compilers and Wine through apt when they are missing. Everything
# goes to build-windows/: GoogleTest built from Debian's sources with the same toolchain, the
# core, and a Wine prefix of its own. Needs no display.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh cmake googletest g++-mingw-w64-x86-64-posix wine64 wine

jobs=${SONALYX_JOBS:-2}
out=$PWD/build-windows
toolchain=$PWD/cmake/mingw-w64-x86_64.cmake
launcher=()
if command -v ccache >/dev/null 2>&1; then
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
fi

# A quiet, headless Wine: no debug channels, no display, no Mono or Gecko installer on first
# start, and a prefix that lives and dies with the build folder.
export WINEDEBUG=-all WINEPREFIX=$out/wine WINEDLLOVERRIDES="mscoree,mshtml=" DISPLAY=
unset WAYLAND_DISPLAY
mkdir -p "$out"
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  echo "Creating the Wine prefix"
  wineboot --init >/dev/null 2>&1
  wineserver -w  # the prefix is written out when its server ends
fi
# One Wine server for the whole run instead of one per test program, and its background
# services started here: started by the first test they would hold CTest's output pipe open.
wineserver -p
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
wine cmd.exe /c exit >/dev/null 2>&1 </dev/null

if [ ! -f "$out/googletest/lib/cmake/GTest/GTestConfig.cmake" ]; then
  echo "Building GoogleTest for Windows"
  cmake -S /usr/src/googletest -B "$out/googletest-build" -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$out/googletest" "${launcher[@]}" >/dev/null
  cmake --build "$out/googletest-build" -j"$jobs" >/dev/null
  cmake --install "$out/googletest-build" >/dev/null
fi

echo "Building the core for Windows"
cmake -S . -B "$out/core" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DSONALYX_CORE_ONLY=ON -DSONALYX_BENCH=OFF -DGTest_DIR="$out/googletest/lib/cmake/GTest" \
  "${launcher[@]}" >/dev/null
cmake --build "$out/core" -j"$jobs"

# Every core test runs: those that need a pseudo terminal (the emulator's, the serial link's)
# belong to tools/ and link/, which are not part of the core and are not built here.
ctest --test-dir "$out/core" --output-on-failure -j"$jobs"
