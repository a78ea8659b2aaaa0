#!/usr/bin/env bash
# Measures the program under Wine on the practice line, every figure beside its reference in the same run.
#   bench/run.sh [SECONDS IDLE]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh
scripts/setup.sh
scripts/build.sh
cmake --build build/win32 --target bare_window process_bench poll_bench >build/bench.log 2>&1 || fail "see build/bench.log"
. scripts/wine_prefix.sh
. scripts/display.sh

prefix="$PWD/build/prefix-bench"
trap 'wineStop "$prefix"; displayStop' EXIT
scripts/practice_prefix.sh "$prefix" --kind e2e --fresh
mkdir -p "$prefix/drive_c/practice"
displayStart
wineStart "$prefix"
run() { WINEPREFIX="$prefix" "$WINELOADER" "$@" </dev/null >build/bench.out 2>&1; tr -d '\r' <build/bench.out; }
run build/win32/bench/poll_bench.exe
# Under Wine every call to its server wakes another process. On one core that costs what it costs; across cores it is
# mostly the machine's wake-up time, many times a call's own, so both are shown.
echo "on one core:"
start=(build/win32/bench/process_bench.exe start build/dist/pelvaro.exe build/win32/bench/bare_window.exe)
wineStop "$prefix"
taskset -c 0 bash -c '. scripts/wine_prefix.sh; wineStart "$1"' - "$prefix"
WINEPREFIX="$prefix" taskset -c 0 "$WINELOADER" "${start[@]}" </dev/null >build/bench.out 2>&1
tr -d '\r' <build/bench.out
wineStop "$prefix"
wineStart "$prefix"
echo "on all cores:"
run "${start[@]}"
printf 'entries 256\nconnections 256\n' >"$prefix/drive_c/practice/scenario.txt"
run build/win32/bench/process_bench.exe idle build/dist/pelvaro.exe "${1:-30}"
echo "size of the exe: $(stat -c %s build/dist/pelvaro.exe) bytes (below 2097152)"
