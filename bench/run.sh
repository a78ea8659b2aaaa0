#!/usr/bin/env bash
# Measures the program under Wine on the practice line, and natively what has no window, every figure beside its
# reference in the same run; prints each row as it comes, and in the end all as one table, which is in build/bench.table
# too. Ends non-zero when a figure misses its limit.
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
heading="what | measured | reference | ratio | limit | verdict"
echo "$heading" | tee build/bench.table
# Shows a program's rows and keeps them; one that breaks off is a row of its own.
judge() { # COMMAND...
  local status=0
  "$@" </dev/null >build/bench.out 2>&1 || status=$?
  tr -d '\r' <build/bench.out | tee build/bench.figures
  if [ "$status" != 0 ] && { [ "$status" != 1 ] || ! grep -q ' | MISSED$' build/bench.figures; }; then
    echo "$* | status $status |  |  | 0 | MISSED" | tee -a build/bench.figures
  fi
  grep ' | ' build/bench.figures >>build/bench.table || true
}
# The rows in columns, as a table of Markdown.
table() {
  awk -F ' [|] ' '
    { for (i = 1; i <= 6; ++i) { cell[NR, i] = $i; if (length($i) > width[i]) width[i] = length($i) } }
    function line(row,   i, text) {
      for (i = 1; i <= 6; ++i) text = text sprintf("| %-*s ", width[i], cell[row, i])
      print text "|"
    }
    END {
      line(1)
      for (i = 1; i <= 6; ++i) { rule = sprintf("%*s", width[i], ""); gsub(/ /, "-", rule); printf "| %s ", rule }
      print "|"
      for (row = 2; row <= NR; ++row) line(row)
    }'
}
# One row, where the figure is the shell's: WHAT MEASURED REFERENCE RATIO LIMIT VERDICT
row() { echo "$1 | $2 | $3 | $4 | $5 | $6"; }
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
  row "a week of ticks, 604,800, all checked" "$(((after - before) / 1000000)) ms" "" "" "below 2000 ms" "$verdict"
}
# Lists of a tenth to a hundred times as many operators as the delivered one has.
listSizes=(100 1000 10000 100000)
lists=("${listSizes[@]/%/.DAT}")
lists=("${lists[@]/#/build/bench/lists/}")
makeLists() {
  native operators operators_bench growth_bench
  mkdir -p build/bench/lists
  local records
  for records in "${listSizes[@]}"; do
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
  row "the same in instructions" "${ours:-none}" "provider list's XML parsed ${theirs:-none}" \
    "$(awk -v a="${ours:-0}" -v b="${theirs:-0}" 'BEGIN { printf "%.3f", b ? a / b : 0 }')" "ratio at most 0.100" "$verdict"
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
  row "size of the exe" "$size bytes" "2097152 bytes" "$(awk -v a="$size" 'BEGIN { printf "%.2f", a / 2097152 }')" \
    "below 2 MiB" "$verdict"
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
starts=(build/dist/pelvaro.exe build/win32/bench/bare_window.exe)
wineStop "$prefix"
taskset -c 0 bash -c '. scripts/wine_prefix.sh; wineStart "$1"' - "$prefix"
judge env WINEPREFIX="$prefix" taskset -c 0 "$WINELOADER" build/win32/bench/process_bench.exe "${starts[@]}" "on one core"
wineStop "$prefix"
wineStart "$prefix"
run build/win32/bench/process_bench.exe "${starts[@]}" "on all cores"
judge env PYTHONDONTWRITEBYTECODE=1 python3 bench/idle_bench.py "${1:-30}"
judge exeSize
makeLists
judge build/bench/bench/operators_bench build/dist/Default.DAT
judge build/bench/bench/growth_bench "${lists[@]}"
judge env PYTHONDONTWRITEBYTECODE=1 timeout 300 python3 bench/picker_bench.py "${lists[@]}"
native install_bench
judge build/bench/bench/install_bench
providerList
echo
table <build/bench.table
kept=$(grep -c ' | kept$' build/bench.table) missed=$(grep -c ' | MISSED$' build/bench.table) || true
echo "figures: $kept kept their limits, $missed missed$skipped"
[ "$missed" = 0 ]
