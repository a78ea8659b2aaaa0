#!/usr/bin/env bash
# Uses the shipped program on the practice line for a long time and counts what it holds meanwhile: handles, threads,
# windows, GDI and USER objects, memory, and how far the time that it shows is from the clock:
#   scripts/long_run.sh [MINUTES]   30 usually; 5 to 300
# A line a sample, a table at the end. The status is 0 when there is no more of anything than after the warm-up.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
. "$here/common.sh"

minutes=${1-30}
[[ "$minutes" =~ ^[1-9][0-9]*$ && "$minutes" -ge 5 && "$minutes" -le 300 ]] ||
  fail "usage: scripts/long_run.sh [MINUTES], 5 to 300"
tools="${PELVARO_E2E_TOOLS:-${PELVARO_BUILD:-$here/../build}/win32/tests}"
[ -f "$tools/e2e_resources.exe" ] ||
  fail "the counter is not built: cmake --build build/win32 --target e2e_driver e2e_resources"
export PELVARO_MINUTES=$minutes
exec "$here/e2e.sh" --limit $((60 * minutes + 300)) long_run.LongRun
