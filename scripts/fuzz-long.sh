#!/usr/bin/env bash
# A long fuzz run of every target, for a nightly or pre-release run:
#   scripts/fuzz-long.sh [MINUTES]        (default 60 minutes per target)
# The targets take turns, two at a time (SONALYX_FUZZ_PARALLEL=N changes that), so that each has
# a core of its own: all of them side by side on a small machine leaves each a few executions a
# second. Each runs at the lowest priority and keeps going after a finding. The corpus persists
# between runs outside the repository, under $SONALYX_FUZZ_HOME (default
# ~/.cache/sonalyx-fuzz): corpus/<target>/ grows from run to run, findings/<target>/ holds what
# failed, logs/<target>.log the run. A finding is fixed, then moved to fuzz/seeds/<target>/ so
# that every smoke run replays it; what stays in findings/ is reported again by the next run.
set -euo pipefail
cd "$(dirname "$0")/.."
minutes=${1:-60}
home=${SONALYX_FUZZ_HOME:-${XDG_CACHE_HOME:-$HOME/.cache}/sonalyx-fuzz}
source scripts/fuzz-common.sh

build_fuzz_targets
mkdir -p "$home/logs" "$home/bin"

# One target for the whole run: one fuzzing process under a supervisor (-fork=1) that records a
# finding and goes on.
fuzz_one() {
  local name=$1 target=$home/bin/$1
  echo "$(date -u +%H:%M) fuzzing $name for ${minutes} min"
  nice -n 19 "$target" -fork=1 -ignore_crashes=1 -ignore_timeouts=1 -ignore_ooms=1 \
    -max_total_time=$((minutes * 60)) -max_len=65536 -rss_limit_mb=2048 -timeout=20 \
    -artifact_prefix="$home/findings/$name/" "$home/corpus/$name" \
    >"$home/logs/$name.log" 2>&1 || true
}

names=()
for built in build-fuzz/fuzz/fuzz_*; do
  [ -x "$built" ] || continue
  name=$(basename "$built")
  # The supervisor starts its fuzzing process afresh from the binary now and then: a copy keeps
  # a rebuild during the run out of it.
  cp "$built" "$home/bin/$name"
  names+=("$name")
  seed_corpus "$name" "$home/corpus/$name"
  mkdir -p "$home/findings/$name"
done
parallel=${SONALYX_FUZZ_PARALLEL:-2}
echo "fuzzing ${names[*]} for ${minutes} min each, ${parallel} at a time, in $home"
for name in "${names[@]}"; do
  while [ "$(jobs -pr | wc -l)" -ge "$parallel" ]; do
    wait -n || true
  done
  fuzz_one "$name" &
done
wait

status=0
printf '%-28s %12s %8s %9s\n' target executions corpus findings
for name in "${names[@]}"; do
  last=$(grep -E '^#[0-9]+: cov:' "$home/logs/$name.log" | tail -n 1 || true)
  executions=$(sed -E 's/^#([0-9]+):.*/\1/' <<<"$last")
  corpus=$(find "$home/corpus/$name" -type f | wc -l)
  findings=$(find "$home/findings/$name" -type f | wc -l)
  printf '%-28s %12s %8s %9s\n' "$name" "${executions:-?}" "$corpus" "$findings"
  [ "$findings" -eq 0 ] || status=1
done
if [ "$status" -ne 0 ]; then
  echo "findings under $home/findings/: fix each, then keep it in fuzz/seeds/<target>/" >&2
fi
exit "$status"
