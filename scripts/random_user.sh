#!/usr/bin/env bash
# The random user's long run, on all processors: so many events on the whole program, and after each what must always
# hold. Prints what has happened and how often; a failure comes with the shortest plan that shows it.
#   scripts/random_user.sh [EVENTS] [SEED]   10,000,000 events (about half an hour on two processors); SEED is the first plan's
#   PELVARO_RANDOM_PLAN='...' build/native/tests/stories/stories_test --gtest_filter='RandomUserStory.Nothing*'   one plan
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")
. "$root/scripts/common.sh"

events=${1:-10000000} seed=${2:-1}
[[ "$events" =~ ^[1-9][0-9]*$ && "$seed" =~ ^[0-9]+$ ]] || fail "usage: scripts/random_user.sh [EVENTS] [SEED]"
build="${PELVARO_BUILD:-$root/build}/native"
program="$build/tests/stories/stories_test"
if [ -z "${PELVARO_BUILD:-}" ]; then
  cd "$root"
  [ -f "$build/build.ninja" ] || cmake --preset native >/dev/null
  cmake --build "$build" --target stories_test >/dev/null || fail "the build failed"
fi
[ -x "$program" ] || fail "the stories are not built: $program"

processes=$(nproc)
logs=$(mktemp -d)
pids=()
cleanUp() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  rm -rf "$logs"
}
trap cleanUp EXIT
trap 'exit 130' INT TERM

start=$SECONDS
for ((i = 0; i < processes; ++i)); do
  # Each begins ten million plans further on, so that no two play the same.
  PELVARO_RANDOM_PLAN='' PELVARO_RANDOM_EVENTS=$(((events + processes - 1) / processes)) \
    PELVARO_RANDOM_SEED=$((seed + i * 10000000)) "$program" \
    --gtest_filter='RandomUserStory.NothingBreaksWhateverTheUserDoes' >"$logs/$i" 2>&1 &
  pids+=($!)
done
failures=0
for ((i = 0; i < processes; ++i)); do
  wait "${pids[$i]}" || { failures=$((failures + 1)); grep -v '^ *[0-9][0-9]* \|^\[' "$logs/$i" >&2 || true; }
done
pids=()
# The counts of all processes together.
awk '/^events [0-9]+$/ { events += $2; next }
     /^ *[0-9]+ (step|pressed|answered|read:|chose|ended|rests) / { count = $1; sub(/^ *[0-9]+ /, ""); counts[$0] += count }
     END { for (name in counts) printf "%10d %s\n", counts[name], name | "sort -k2"; close("sort -k2")
           printf "%d events\n", events }' "$logs"/*
took=$((SECONDS - start))
say "$events events asked for, $processes processes, $took s, $failures failures"
[ "$failures" = 0 ]
