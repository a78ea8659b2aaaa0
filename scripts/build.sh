#!/usr/bin/env bash
# Builds the program for Windows and what it is tried on: build/dist/ complete, the setup program and the portable
# archive, the practice line, the phones.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

mkdir -p build
build() { # PRESET TARGET...
  local preset=$1 log=build/build-$1.log
  shift
  { [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"; } >"$log" 2>&1 &&
    cmake --build "build/$preset" --target "$@" >>"$log" 2>&1 ||
    { { grep -E 'error|Error|undefined' "$log" || tail -n 20 "$log"; } | head -n 20 >&2; fail "the $preset build failed: see $log"; }
}
packages=
! command -v makensis >/dev/null || packages=packages
if [ "${1:-}" = --all ]; then
  build win32 all $packages
  build native all
else
  build win32 pelvaro operators pelvaro_operators_list pelvaro_manual practice_rasapi32 practice_packages canary \
    e2e_driver $packages
  build native phone_exchange
fi
mkdir -p build/dist
for file in pelvaro.exe operators.exe loading.avi Default.DAT manual.html; do
  cmp -s "build/win32/dist/$file" "build/dist/$file" || cp "build/win32/dist/$file" "build/dist/$file"
done
[ -z "$packages" ] || for file in pelvaro-setup.exe pelvaro-portable.zip; do
  cmp -s "build/win32/packages/$file" "build/$file" || cp "build/win32/packages/$file" "build/$file"
done
