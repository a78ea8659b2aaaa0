#!/usr/bin/env bash
# Builds the fuzzers and runs them; new inputs are kept in build/corpus/.
#   scripts/fuzz.sh [SECONDS]        each for some seconds
#   scripts/fuzz.sh --executions N   N executions in all (100,000,000 without N), one fuzzer a processor, and a table of
#                                    them. What is done stands in build/fuzz-report.txt: a run that was cut off goes on;
#                                    without that file it begins anew
#   scripts/fuzz.sh --coverage       which lines and branches of each parser the corpus in the tree reaches, and what is
#                                    left
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

build=${PELVARO_FUZZ_BUILD:-build/fuzz}
make() { # OPTIONS...: builds the fuzzers
  [ -f "$build/build.ninja" ] || cmake --preset fuzz -B "$build" "$@" >/dev/null
  cmake --build "$build" --target fuzzers
}

case ${1:-} in
  --coverage)
    build=build/fuzz-coverage
    make -DCMAKE_CXX_FLAGS="-fprofile-instr-generate -fcoverage-mapping" >build/build-fuzz-coverage.log 2>&1 ||
      { tail -n 20 build/build-fuzz-coverage.log >&2; fail "the build failed: see build/build-fuzz-coverage.log"; }
    exec python3 tests/fuzz/coverage.py "$build"
    ;;
  --executions)
    make
    exec python3 tests/fuzz/executions.py "$build" "${2:-100000000}" build/fuzz-report.txt
    ;;
esac

make
export seconds=${1:-5}
one() { # FUZZER
  local name=${1##*/} length=0 log # 0: of the longest seed
  log=$(mktemp)
  mkdir -p "build/corpus/$name"
  [ "$name" != operator_list_fuzz ] || length=65536
  "$1" -max_len="$length" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=1024 -verbosity=0 -print_final_stats=1 \
    -artifact_prefix="build/corpus/$name-" "build/corpus/$name" "tests/fuzz/corpus/$name" >"$log" 2>&1 &&
    echo "$name: passed, $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") executions" ||
    { cat "$log"; echo "$name found something: see build/corpus/"; return 1; }
  rm -f "$log"
}
export -f one
mapfile -t fuzzers < <(find "$build" -name '*_fuzz' -type f -perm -u+x | sort)
printf '%s\n' "${fuzzers[@]}" | xargs -P "$(nproc)" -I{} bash -c 'one "$1"' bash {} || fail "a fuzzer found something"
echo "${#fuzzers[@]} passed, 0 failed"
