#!/usr/bin/env bash
# Builds the fuzzers and runs each for some seconds: scripts/fuzz.sh [SECONDS]. New inputs are kept in build/corpus/.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

seconds=${1:-5}
[ -f build/fuzz/build.ninja ] || cmake --preset fuzz >/dev/null
cmake --build build/fuzz
count=0
for fuzzer in $(find build/fuzz -name '*_fuzz' -type f -perm -u+x | sort); do
  name=$(basename "$fuzzer")
  mkdir -p "build/corpus/$name"
  seeds=tests/fuzz/corpus/$name
  length=0 # of the longest seed
  [ "$name" != operator_list_fuzz ] || length=65536
  "$fuzzer" -max_len="$length" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=1024 -verbosity=0 -print_final_stats=1 \
    -artifact_prefix="build/corpus/$name-" "build/corpus/$name" $([ -d "$seeds" ] && echo "$seeds") ||
    fail "$name found something: see build/corpus/"
  count=$((count + 1))
done
echo "$count passed, 0 failed"
