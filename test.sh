#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test (and a short fuzz run).
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-deps.sh

jobs=${SONALYX_JOBS:-2}
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$jobs"

# The fuzz targets need clang's libFuzzer and are built apart from the main build.
fuzz_status=0
if command -v clang++ >/dev/null 2>&1; then
  scripts/fuzz-smoke.sh "${SONALYX_FUZZ_SECONDS:-8}" || fuzz_status=$?
else
  echo "clang++ not found: fuzz smoke run skipped"
fi

ctest --test-dir build --output-on-failure -j"$jobs"
if [ "$fuzz_status" -ne 0 ]; then
  echo "fuzz smoke run failed" >&2
  exit "$fuzz_status"
fi
