#!/usr/bin/env bash
# Runs one Windows program for the tests, without a display: scripts/wine_run.sh PROGRAM.exe [ARGUMENT...]
# Its exit code is the program's (lower 8 bits). The prefix is build/prefix-test or $PELVARO_TEST_PREFIX; it is made,
# and its server started, when that has not been done yet. CMake uses this script as its emulator.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
. "$here/wine_prefix.sh"
[ $# -gt 0 ] || fail "usage: scripts/wine_run.sh PROGRAM.exe [ARGUMENT...]"

export WINEPREFIX="${PELVARO_TEST_PREFIX:-$(dirname "$here")/build/prefix-test}"
unset DISPLAY WAYLAND_DISPLAY
winePrefixMake "$WINEPREFIX" test >&2
wineStart "$WINEPREFIX"

if [ -t 1 ] && [ -t 2 ]; then
  exec "$WINELOADER" "$@"
fi
# Into files, not into the caller's pipe: Wine's own desktop process may outlive the program with
# its files still open, and the caller would wait for it.
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
code=0
"$WINELOADER" "$@" >"$out/1" 2>"$out/2" || code=$?
cat "$out/1"
cat "$out/2" >&2
exit "$code"
