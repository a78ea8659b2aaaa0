#!/usr/bin/env bash
# Drives the shipped program through its windows on the practice line:
#   scripts/e2e.sh [--limit SECONDS] [FILE[.CLASS[.TEST]]...]   e.g. scripts/e2e.sh selftest_e2e
# Without names: every tests/e2e/*_e2e.py. Pictures go to build/screens/, logs to build/e2e-logs/.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
. "$root/scripts/common.sh"

limit=600 names=()
while [ $# -gt 0 ]; do
  case "$1" in
    --limit) limit=$2; shift ;;
    *) names+=("${1%.py}") ;;
  esac
  shift
done
tools="${PELVARO_E2E_TOOLS:-${PELVARO_BUILD:-$root/build}/win32/tests}"
[ -f "$tools/e2e_driver.exe" ] || fail "the driver is not built: $tools/e2e_driver.exe"
cd "$root/tests/e2e"
[ ${#names[@]} -gt 0 ] || names=($(ls -- *_e2e.py | grep -v '^pelvaro_e2e.py$' | sed 's/\.py$//'))

export PYTHONDONTWRITEBYTECODE=1
code=0
timeout --kill-after=30 "$limit" python3 -m unittest --verbose "${names[@]}" </dev/null || code=$?
[ "$code" != 124 ] || fail "the driven tests were stopped after $limit seconds"
exit "$code"
