#!/usr/bin/env bash
# Builds the program for Windows and what it is tried on: build/dist/ complete, the practice line, the phones.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

mkdir -p build
build() { # PRESET TARGET...
  local preset=$1 log=build/build-$1.log
  shift
  { [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"; } >"$log" 2>&1 &&
    cmake --build "build/$preset" --target "$@" >>"$log" 2>&1 ||
    { grep -E 'error|Error|undefined' "$log" | head -n 20 >&2; fail "the $preset build failed: see $log"; }
}
if [ "${1:-}" = --all ]; then
  build win32 all
  build native all
else
  build win32 pelvaro pelvaro_operators_list practice_rasapi32 canary e2e_driver
  build native phone_exchange
fi
mkdir -p build/dist
for file in pelvaro.exe loading.avi Default.DAT; do
  cmp -s "build/win32/dist/$file" "build/dist/$file" || cp "build/win32/dist/$file" "build/dist/$file"
done
