#!/usr/bin/env bash
# Pictures of every window of the built program, for looking at them one by one, in build/screens/gallery/:
#   scripts/gallery.sh [--sheet] [RESOLUTION...]   usually 96 144 192; --sheet renews docs/contact_sheet.png as well
# Each window with usual texts and with the longest ones. The status is 0 when all of them were taken.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
. "$root/scripts/common.sh"

[ -f "${PELVARO_BUILD:-$root/build}/dist/pelvaro.exe" ] || fail "the program is not built: run ./run.sh --build"
[ -f "${PELVARO_E2E_TOOLS:-${PELVARO_BUILD:-$root/build}/win32/tests}/e2e_driver.exe" ] ||
  fail "the driver is not built: cmake --build build/win32 --target e2e_driver"
cd "$root"
export PYTHONDONTWRITEBYTECODE=1
code=0
timeout --kill-after=30 600 python3 tests/e2e/gallery.py "$@" </dev/null || code=$?
[ "$code" != 124 ] || fail "the gallery was stopped after ten minutes"
exit "$code"
