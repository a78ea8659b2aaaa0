#!/usr/bin/env bash
# Sets up what is missing, builds, and runs all tests.
#   ./test.sh           everything: native with sanitizers, under Wine, the driven program, fuzzers, style
#   ./test.sh --quick   the native tests alone
#   ./test.sh --coverage   which lines and branches of the portable code they reach
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

quick=
case "${1:-}" in
  "") ;;
  --quick) quick=yes ;;
  --coverage) scripts/setup.sh; exec scripts/coverage.sh ;;
  --help | -h) sed -n '2,6s/^# //p' "$0"; exit 0 ;;
  *) fail "unknown option $1 (./test.sh --help)" ;;
esac
scripts/setup.sh

step() { # NAME COMMAND...: runs it, its output kept in a file and shown when it fails
  local name=$1 log start=$SECONDS
  shift
  log="build/test-${name// /-}.log"
  if "$@" >"$log" 2>&1 </dev/null; then
    say "$name: passed ($((SECONDS - start)) s)$(grep -hoE '[0-9]+ tests? (from|passed|failed)[^.]*|Ran [0-9]+ tests?|100% tests passed.*' "$log" | tail -n 1 | sed 's/^/, /')"
    passed=$((passed + 1))
  else
    tail -n 60 "$log" >&2
    say "$name: FAILED, see $log"
    failed=$((failed + 1))
  fi
}
mkdir -p build
passed=0 failed=0

if [ -n "$quick" ]; then
  [ -f build/native/build.ninja ] || cmake --preset native >/dev/null
  step "native build" cmake --build build/native
else
  step "build" scripts/build.sh --all
fi
step "native tests" ctest --test-dir build/native --output-on-failure -j2
if [ -z "$quick" ]; then
  step "style and layers" scripts/lint.sh
  step "canary" scripts/wine_canary.sh
  step "exe" scripts/check_exe.sh
  step "tests under Wine" ctest --test-dir build/win32 --output-on-failure -j2
  step "driven program" scripts/e2e.sh
  step "fuzzers" scripts/fuzz.sh 5
fi
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
