#!/usr/bin/env bash
# Builds the libFuzzer targets with clang under AddressSanitizer and UndefinedBehaviorSanitizer
# and runs each for a short time on a seed corpus made from the sample documents.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}

cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++ -DSONALYX_CORE_ONLY=ON -DSONALYX_FUZZ=ON \
  -DSONALYX_TESTS=OFF -DSONALYX_BENCH=OFF >/dev/null
cmake --build build-fuzz -j"${SONALYX_JOBS:-2}"

export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export ASAN_OPTIONS=detect_leaks=1
for target in build-fuzz/fuzz/fuzz_*; do
  [ -x "$target" ] || continue
  name=$(basename "$target")
  corpus=fuzz-corpus/$name
  mkdir -p "$corpus"
  cp -n data/samples/*.csv "$corpus"/ 2>/dev/null || true
  [ -d "fuzz/seeds/$name" ] && cp -n "fuzz/seeds/$name"/* "$corpus"/ 2>/dev/null || true
  echo "fuzzing $name for ${seconds}s"
  "$target" -max_total_time="$seconds" -max_len=65536 -rss_limit_mb=2048 \
    -print_final_stats=0 "$corpus" 2>"build-fuzz/$name.log" || {
      tail -n 60 "build-fuzz/$name.log" >&2
      exit 1
    }
  grep -E '^(#[0-9]+ +DONE|Done)' "build-fuzz/$name.log" | tail -n 1 || true
done
