#!/usr/bin/env bash
# Drives the shipped program through its windows on the practice line:
#   scripts/e2e.sh [--limit SECONDS] [--lanes N] [FILE[.CLASS[.TEST]]...]   e.g. scripts/e2e.sh selftest_e2e
# Without names: every tests/e2e/*_e2e.py, N files at a time (3), for they mostly wait; each session has a prefix and a
# display of its own. Pictures go to build/screens/, logs to build/e2e-logs/.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
. "$root/scripts/common.sh"

limit=600 lanes=3 names=()
while [ $# -gt 0 ]; do
  case "$1" in
    --limit) limit=$2; shift ;;
    --lanes) lanes=$2; shift ;;
    *) names+=("${1%.py}") ;;
  esac
  shift
done
tools="${PELVARO_E2E_TOOLS:-${PELVARO_BUILD:-$root/build}/win32/tests}"
[ -f "$tools/e2e_driver.exe" ] || fail "the driver is not built: $tools/e2e_driver.exe"
cd "$root/tests/e2e"

export PYTHONDONTWRITEBYTECODE=1
code=0
if [ ${#names[@]} -gt 0 ]; then
  timeout --kill-after=30 "$limit" python3 -m unittest --verbose "${names[@]}" </dev/null || code=$?
  [ "$code" != 124 ] || fail "the driven tests were stopped after $limit seconds"
  exit "$code"
fi
logs="${PELVARO_BUILD:-$root/build}/e2e-logs"
mkdir -p "$logs"
rm -f "$logs"/*.first.log
# A file by itself, its result beside its log. The hand that drives may be left waiting for ever by Wine's remote calls when it
# asks as a screen reader does: such a file has one more try, and the first log is kept.
one() { # NAME
  local try
  for try in first second; do
    timeout --kill-after=30 "$limit" python3 -m unittest --verbose "$1" >"$logs/$1.log" 2>&1 </dev/null
    echo $? >"$logs/$1.code"
    [ "$try" = first ] && grep -q 'the driver does not answer within' "$logs/$1.log" || return 0
    cp "$logs/$1.log" "$logs/$1.first.log"
  done
}
export -f one
export limit logs
# What takes long first, so that the lanes end together: the limits, which wait in real seconds, then the large files.
{ echo limits_e2e.py; ls -S -- *_e2e.py | grep -v '^limits_e2e.py$'; } | grep -v '^pelvaro_e2e.py$' | sed 's/\.py$//' |
  xargs -P "$lanes" -I{} bash -c 'one "$1"' bash {}
count=0
for file in $(ls -- *_e2e.py | grep -v '^pelvaro_e2e.py$' | sed 's/\.py$//'); do
  status=$(cat "$logs/$file.code")
  ran=$(sed -n 's/^Ran \([0-9]*\) tests\? in.*/\1/p' "$logs/$file.log")
  count=$((count + ${ran:-0}))
  [ ! -f "$logs/$file.first.log" ] || say "$file: the driver hung once, see $logs/$file.first.log"
  [ "$status" = 0 ] && { say "$file: $(grep '^Ran ' "$logs/$file.log")"; continue; }
  code=1
  cat "$logs/$file.log"
  [ "$status" != 124 ] || say "$file: stopped after $limit seconds"
done
echo "Ran $count tests"
exit "$code"
