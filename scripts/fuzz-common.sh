# Shared by fuzz-smoke.sh and fuzz-long.sh: the clang build of the libFuzzer targets and the
# seed corpus of each. Sourced from the repository root.

# Builds every target under build-fuzz/ (core only, ASan and UBSan), and nothing else.
build_fuzz_targets() {
  cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DSONALYX_CORE_ONLY=ON -DSONALYX_FUZZ=ON \
    -DSONALYX_TESTS=OFF -DSONALYX_BENCH=OFF >/dev/null
  cmake --build build-fuzz -j"${SONALYX_JOBS:-2}" --target sonalyx_fuzz
}

# Copies a target's seeds into its corpus folder: the sample documents for the document
# loader, and every kept finding under fuzz/seeds/<target>/, so that each run replays them.
seed_corpus() {
  local name=$1 corpus=$2
  mkdir -p "$corpus"
  if [ "$name" = fuzz_document_loader ]; then
    cp -n data/samples/*.csv "$corpus"/ 2>/dev/null || true
  fi
  if [ -d "fuzz/seeds/$name" ]; then
    cp -n "fuzz/seeds/$name"/* "$corpus"/ 2>/dev/null || true
  fi
}

export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export ASAN_OPTIONS=detect_leaks=1
