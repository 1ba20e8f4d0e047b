#!/usr/bin/env bash
# Builds the libFuzzer targets with clang under AddressSanitizer and UndefinedBehaviorSanitizer
# and runs each for a short time (seconds per target, default 8) on its seeds; every kept
# finding under fuzz/seeds/ is replayed first. For long runs see fuzz-long.sh.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-8}
source scripts/fuzz-common.sh

build_fuzz_targets
for target in build-fuzz/fuzz/fuzz_*; do
  [ -x "$target" ] || continue
  name=$(basename "$target")
  corpus=fuzz-corpus/$name
  seed_corpus "$name" "$corpus"
  echo "fuzzing $name for ${seconds}s"
  "$target" -max_total_time="$seconds" -max_len=65536 -rss_limit_mb=2048 -timeout=10 \
    -print_final_stats=0 "$corpus" 2>"build-fuzz/$name.log" || {
      tail -n 60 "build-fuzz/$name.log" >&2
      exit 1
    }
  grep -E '^(#[0-9]+ +DONE|Done)' "build-fuzz/$name.log" | tail -n 1 || true
done
