#!/usr/bin/env bash
# Builds the Debian package sonalyx_<version>_<arch>.deb from this tree: a Release build
# installed under /usr, packed by CPack, its Depends computed from the programs' libraries.
# Usage: scripts/package.sh [OUTDIR]   (the package lands in OUTDIR, by default the tree's root)
# Runs lintian on the package when lintian is installed. SONALYX_JOBS=N sets the build jobs.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
out=$(realpath -m "${1:-$root}")
build=$root/build-package

# Besides what the build needs: dpkg-shlibdeps (dpkg-dev) and file, which CPack uses to
# compute Depends.
scripts/install-deps.sh dpkg-dev file

launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
# Debian's own compiler and linker flags (-O2, hardening) stand in for CMake's Release -O3.
started=$(date +%s)
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DSONALYX_TESTS=OFF -DSONALYX_BENCH=OFF "${launcher[@]}" \
  -DCMAKE_CXX_FLAGS_RELEASE=-DNDEBUG \
  -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)"
cmake --build "$build" -j "${SONALYX_JOBS:-2}"
rm -rf "$build/dist"
cpack --config "$build/CPackConfig.cmake" -B "$build/dist"

mkdir -p "$out"
deb=$(find "$build/dist" -maxdepth 1 -name 'sonalyx_*.deb' -print -quit)
mv -f "$deb" "$out/"
deb=$out/$(basename "$deb")
echo "Built $deb ($(du -k "$deb" | cut -f1) KiB) in $(($(date +%s) - started)) s"
if command -v lintian >/dev/null; then
  lintian --fail-on error "$deb"
fi
