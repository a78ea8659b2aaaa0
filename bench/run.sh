#!/usr/bin/env bash
# Measures the program under Wine on the practice line, and natively what has no window, every figure beside its
# reference in the same run. Ends non-zero when a figure misses its limit.
#   bench/run.sh [SECONDS IDLE]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh
scripts/setup.sh
scripts/build.sh
cmake --build build/win32 --target bare_window process_bench poll_bench probe_bench >build/bench.log 2>&1 || fail "see build/bench.log"
. scripts/wine_prefix.sh
. scripts/display.sh

prefix="$PWD/build/prefix-bench"
trap 'wineStop "$prefix"; displayStop' EXIT
scripts/practice_prefix.sh "$prefix" --kind e2e --fresh
mkdir -p "$prefix/drive_c/practice"
displayStart
wineStart "$prefix"
kept=0 missed=0
# Shows a program's figures and counts those that keep their limits; one that breaks off counts as one more missed.
judge() { # COMMAND...
  local status=0 bad
  "$@" </dev/null >build/bench.out 2>&1 || status=$?
  tr -d '\r' <build/bench.out >build/bench.figures
  cat build/bench.figures
  bad=$(grep -c ': MISSED$' build/bench.figures) || true
  if [ "$status" != 0 ] && { [ "$status" != 1 ] || [ "$bad" = 0 ]; }; then
    echo "it ended with status $status: MISSED"
    bad=$((bad + 1))
  fi
  kept=$((kept + $(grep -c ': kept$' build/bench.figures || true)))
  missed=$((missed + bad))
}
run() { judge env WINEPREFIX="$prefix" "$WINELOADER" "$@"; }
phones=
plugIn() { # COM5=nokia...
  build/native/practice/phone_exchange --prefix "$prefix" --control "$prefix/phones.ctl" --with-pid $$ "$@" \
    </dev/null >build/bench.phones 2>&1 &
  phones=$!
  for ((i = 0; i < 200; i++)); do
    ! grep -q '^ready' build/bench.phones || return 0
    sleep 0.05
  done
  fail "the phones do not start: see build/bench.phones"
}
plugOut() {
  [ -z "$phones" ] || { kill "$phones" 2>/dev/null; wait "$phones" || true; }
  phones=
}
native() { # TARGET...
  { cmake --preset bench && cmake --build build/bench --target "$@"; } >build/bench.log 2>&1 || fail "see build/bench.log"
}
# The whole program without a screen, 604,800 ticks of the traffic timer with everything checked after each.
week() {
  native stories_test
  local before after verdict=kept
  before=$(date +%s%N)
  build/bench/tests/stories/stories_test --gtest_brief=1 --gtest_filter='Story.AWeek*' >build/bench.log 2>&1 ||
    verdict=MISSED
  after=$(date +%s%N)
  [ $(((after - before) / 1000000)) -lt 2000 ] || verdict=MISSED
  echo "a week of ticks: $(((after - before) / 1000000)) ms (below 2000): $verdict"
  [ "$verdict" = kept ]
}
# Lists of about ten times and a hundred times as many operators as the delivered one has.
makeLists() {
  native operators operators_bench
  mkdir -p build/bench/lists
  local records
  for records in 10000 100000; do
    python3 -B bench/large_list.py "$records" "build/bench/lists/$records.csv"
    build/bench/tools/operators/operators from-csv --seed 1 "build/bench/lists/$records.csv" \
      >"build/bench/lists/$records.DAT"
  done
}
# What the figures of the provider list need, and nothing else does. False when it is not to be had.
providerPackages=(valgrind libxml2-dev mobile-broadband-provider-info)
providerPackagesThere() {
  ! dpkg-query -W -f '${db:Status-Status}\n' "${providerPackages[@]}" 2>&1 | grep -qvx installed
}
haveProviderPackages() {
  ! providerPackagesThere || return 0
  local sudo=
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || return 1
    sudo=sudo
  fi
  say "installing packages: ${providerPackages[*]}"
  local apt="$sudo env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get -qq -o DPkg::Lock::Timeout=600 -o Acquire::Retries=3"
  { $apt update; $apt install -y --no-install-recommends "${providerPackages[@]}"; } </dev/null >build/bench.log 2>&1 || true
  providerPackagesThere
}
# The instructions that a function of provider_list_bench takes with all that it calls.
instructions() { # FUNCTION KIND FILE
  valgrind --tool=callgrind --callgrind-out-file=/dev/null --toggle-collect="$1" \
    build/bench/bench/provider_list_bench "$2" "$3" 2>&1 | sed -n 's/.*Collected *: *//p'
}
instructionCounts() {
  local ours theirs verdict=kept
  ours=$(instructions listCountry list "$1")
  theirs=$(instructions parseProviders xml "$2")
  [ "${ours:-0}" -gt 0 ] && [ $((10 * ours)) -le "${theirs:-0}" ] || verdict=MISSED
  echo "the list loaded and a country listed: ${ours:-no} instructions, the provider list's XML parsed ${theirs:-none}" \
    "(at most a tenth): $verdict"
  [ "$verdict" = kept ]
}
skipped=
providerList() {
  if ! haveProviderPackages; then
    skipped=", those of the provider list skipped"
    say "figures of the provider list skipped, which need the packages ${providerPackages[*]}"
    return 0
  fi
  native provider_list_bench
  local files=(build/dist/Default.DAT /usr/share/mobile-broadband-provider-info/serviceproviders.xml)
  judge build/bench/bench/provider_list_bench time "${files[@]}"
  judge instructionCounts "${files[@]}"
}
exeSize() {
  local size verdict=kept
  size=$(stat -c %s build/dist/pelvaro.exe)
  [ "$size" -lt 2097152 ] || verdict=MISSED
  echo "size of the exe: $size bytes (below 2097152): $verdict"
  [ "$verdict" = kept ]
}

judge week
run build/win32/bench/poll_bench.exe
run build/win32/bench/probe_bench.exe absent
plugIn COM5=nokia
run build/win32/bench/probe_bench.exe phone
echo 'answer COM5 mute' >"$prefix/phones.ctl"
run build/win32/bench/probe_bench.exe silent
plugOut
# Under Wine every call to its server wakes another process. On one core that costs what it costs; across cores it is
# mostly the machine's wake-up time, on a virtual machine many times a call's own. Both are judged.
echo "on one core:"
starts=(build/dist/pelvaro.exe build/win32/bench/bare_window.exe)
wineStop "$prefix"
taskset -c 0 bash -c '. scripts/wine_prefix.sh; wineStart "$1"' - "$prefix"
judge env WINEPREFIX="$prefix" taskset -c 0 "$WINELOADER" build/win32/bench/process_bench.exe start "${starts[@]}"
wineStop "$prefix"
wineStart "$prefix"
echo "on all cores:"
run build/win32/bench/process_bench.exe start "${starts[@]}"
printf 'entries 256\nconnections 256\n' >"$prefix/drive_c/practice/scenario.txt"
run build/win32/bench/process_bench.exe idle build/dist/pelvaro.exe "${1:-30}"
judge exeSize
makeLists
judge build/bench/bench/operators_bench build/dist/Default.DAT build/bench/lists/{10000,100000}.DAT
judge env PYTHONDONTWRITEBYTECODE=1 timeout 300 python3 bench/picker_bench.py build/bench/lists/{10000,100000}.DAT
native install_bench
judge build/bench/bench/install_bench
providerList
echo "figures: $kept kept their limits, $missed missed$skipped"
[ "$missed" = 0 ]
