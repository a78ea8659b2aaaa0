#!/usr/bin/env bash
# The guided tour of the built program: a display, the practice line and its phones, and the program driven through
# them by mouse and keyboard. Tells every step in a line and keeps a picture of it in build/screens/.
#   scripts/tour.sh [--film]    --film renews the animated picture docs/tour.gif as well
# The status is 0 when every step was seen.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
. "$root/scripts/common.sh"

[ -f "${PELVARO_BUILD:-$root/build}/dist/pelvaro.exe" ] || fail "the program is not built: run ./run.sh --build"
[ -f "${PELVARO_E2E_TOOLS:-${PELVARO_BUILD:-$root/build}/win32/tests}/e2e_driver.exe" ] ||
  fail "the driver is not built: cmake --build build/win32 --target e2e_driver"
cd "$root"
export PYTHONDONTWRITEBYTECODE=1
code=0
timeout --kill-after=30 180 python3 tests/e2e/tour.py "$@" </dev/null || code=$?
[ "$code" != 124 ] || fail "the tour was stopped after three minutes"
exit "$code"
