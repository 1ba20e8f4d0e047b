#!/usr/bin/env bash
# Installs what is missing, builds Sonalyx and runs it.
# With a display: the main window opens with the sample documents, and a receiver emulator
# serves a pseudo serial port to receive from. Without one: a headless demo with the
# command-line tool writes its results under out/.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"${SONALYX_JOBS:-2}"

cli=build/src/cli/sonalyx-cli
app=build/src/app/sonalyx
emulator=build/tools/emulator/sonalyx-receiver-emulator
mkdir -p out
port_link="$PWD/out/receiver-port"

emulator_pid=""
cleanup() { [ -n "$emulator_pid" ] && kill "$emulator_pid" 2>/dev/null || true; }
trap cleanup EXIT

start_emulator() {
  [ -x "$emulator" ] || return 1
  rm -f "$port_link"
  "$emulator" --config 10 --link "$port_link" >out/emulator.log 2>&1 &
  emulator_pid=$!
  for _ in $(seq 50); do [ -e "$port_link" ] && return 0; sleep 0.1; done
  return 1
}

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -x "$app" ]; then
  args=()
  if start_emulator; then
    echo "A receiver emulator is listening on $port_link (File > Receive, pick that port)."
    args+=(--port "$port_link")
  fi
  exec_status=0
  "$app" "${args[@]}" data/samples/*.csv || exec_status=$?
  exit $exec_status
fi

echo "No display: running the headless demo with $cli"
for f in data/samples/*.csv; do
  "$cli" convert "$f" -o "out/$(basename "$f")"
  echo "  read and wrote back $f -> out/$(basename "$f")"
done
if start_emulator; then
  "$cli" receive --port "$port_link" --tick-ms 100 -o out/received.csv
  echo "  received a configuration-10 measurement from the emulator -> out/received.csv"
  "$cli" render out/received.csv --tab parameters -o out/received-parameters.png
  "$cli" render out/received.csv --tab parameters --page 1 --pages 2 -o out/received-parameters.pdf
  echo "  drew its parameter sheet -> out/received-parameters.png and a print page -> .pdf"
fi
echo "Done. Results are in out/."
