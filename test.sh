#!/usr/bin/env bash
# Sets up what is missing, builds, and runs all tests.
#   ./test.sh           everything: native with sanitizers, under Wine, the driven program, fuzzers, style
#   ./test.sh --quick   the native tests alone
# What takes long, one of:
#   ./test.sh --coverage             which lines and branches of the portable code the native tests reach
#   ./test.sh --faults               every call to the system fails in turn, with every code, at every place (a minute)
#   ./test.sh --random [EVENTS]      a random user, 10,000,000 events (half an hour)
#   ./test.sh --kills [N]            the program killed at N moments (100) of each thing that it writes (10 minutes)
#   ./test.sh --fuzz [EXECUTIONS]    the fuzzers, 100,000,000 executions in all (an hour and more)
#   ./test.sh --long-run [MINUTES]   30 minutes connected under Wine, counting what it holds
#   ./test.sh --mutants              whether the tests notice a change of the code, for every change (an hour)
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

# One of the long runs instead of the tests, everything built before it.
long() { # COMMAND...
  scripts/setup.sh
  scripts/build.sh --all
  exec "$@"
}
quick=
case "${1:-}" in
  "") ;;
  --quick) quick=yes ;;
  --coverage) scripts/setup.sh; exec scripts/coverage.sh ;;
  --faults) PELVARO_FAULTS=all long build/native/tests/stories/stories_test --gtest_filter='Faults*' ;;
  --random) long scripts/random_user.sh "${@:2}" ;;
  --kills) long scripts/kills.sh "${@:2}" ;;
  --fuzz) long scripts/fuzz.sh --executions "${2:-100000000}" ;;
  --long-run) long scripts/long_run.sh "${@:2}" ;;
  --mutants) long tools/mutants.py --most 100000 ;;
  --help | -h) sed -n '2,12s/^# //p' "$0"; exit 0 ;;
  *) fail "unknown option $1 (./test.sh --help)" ;;
esac
scripts/setup.sh

logOf() { echo "build/test-${1// /-}.log"; }
report() { # NAME STATUS SECONDS: of a step that has ended; what it said is shown when it failed
  local log
  log=$(logOf "$1")
  if [ "$2" = 0 ]; then
    say "$1: passed ($3 s)$(grep -hoE '[0-9]+ tests? (from|passed|failed)[^.]*|Ran [0-9]+ tests?|100% tests passed.*' "$log" | tail -n 1 | sed 's/^/, /')"
    passed=$((passed + 1))
  else
    tail -n 60 "$log" >&2
    say "$1: FAILED, see $log"
    failed=$((failed + 1))
  fi
}
step() { # NAME COMMAND...
  local start=$SECONDS status=0
  "${@:2}" >"$(logOf "$1")" 2>&1 </dev/null || status=$?
  report "$1" "$status" $((SECONDS - start))
}
# What only computes goes on beside what mostly waits, with what that leaves of the processors.
declare -A besides=()
trap 'kill $(jobs -p) 2>/dev/null || true' EXIT
beside() { # NAME COMMAND...
  nice -n 19 "${@:2}" >"$(logOf "$1")" 2>&1 </dev/null &
  besides[$1]="$! $SECONDS"
}
awaitBesides() {
  local name pid start status
  for name in "${!besides[@]}"; do
    read -r pid start <<<"${besides[$name]}"
    status=0
    wait "$pid" || status=$?
    report "$name" "$status" $((SECONDS - start))
  done
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
  beside "style and layers" scripts/lint.sh
  beside "fuzzers" scripts/fuzz.sh 3
  step "canary" scripts/wine_canary.sh
  step "exe" scripts/check_exe.sh
  step "tests under Wine" ctest --test-dir build/win32 --output-on-failure -j2
  step "driven program" scripts/e2e.sh
  awaitBesides
fi
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
