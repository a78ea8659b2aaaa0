#!/usr/bin/env bash
# Layers, format and clang-tidy over the project's sources. A file that was clean is looked at again only when it, a
# header or the configuration has changed.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

python3 scripts/check_layers.py

mapfile -t sources < <(git ls-files -co --exclude-standard 'src/*.cpp' 'src/*.h' 'sandbox/*.cpp' 'sandbox/*.h' \
  'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h')
clang-format-14 --dry-run --Werror "${sources[@]}" || fail "run clang-format-14 -i over what is named above"

stamps=build/tidy
mkdir -p "$stamps"
headers=$(cat .clang-tidy $(printf '%s\n' "${sources[@]}" | grep '\.h$') | sha256sum | cut -c1-16)
gcc=/usr/lib/gcc/i686-w64-mingw32/12-posix/include/c++
cross=(--extra-arg-before=--target=i686-w64-mingw32 --extra-arg=-isystem$gcc --extra-arg=-isystem$gcc/i686-w64-mingw32)
native=$(grep -o '"file": "[^"]*"' build/native/compile_commands.json)
win32=$(grep -o '"file": "[^"]*"' build/win32/compile_commands.json)

tidy() { # FILE STAMP
  local file=$1 stamp=$2 log
  log=$(mktemp)
  if grep -qF "/$file\"" <<<"$native"; then
    clang-tidy-14 --quiet -p build/native --extra-arg=-Wno-unknown-warning-option "$file" >"$log" 2>&1
  else
    clang-tidy-14 --quiet -p build/win32 --extra-arg=-Wno-unknown-warning-option "${cross[@]}" "$file" >"$log" 2>&1
  fi && touch "$stamp" || { grep -vE '^[0-9]+ warnings? (generated|treated)' "$log"; rm -f "$log"; return 1; }
  rm -f "$log"
}

status=0 jobs=0
for file in "${sources[@]}"; do
  # Tests are compiled with every warning and run with sanitizers; this is for what they test.
  [[ $file == *.cpp && $file != *_test.cpp && $file != tests/* ]] || continue
  grep -qF "/$file\"" <<<"$native$win32" || continue
  stamp="$stamps/$(echo "$file $headers $(sha256sum <"$file")" | sha256sum | cut -c1-32)"
  [ ! -f "$stamp" ] || continue
  [ "$jobs" -lt "$(nproc)" ] || { wait -n || status=1; jobs=$((jobs - 1)); }
  tidy "$file" "$stamp" &
  jobs=$((jobs + 1))
done
while [ "$jobs" -gt 0 ]; do
  wait -n || status=1
  jobs=$((jobs - 1))
done
[ "$status" = 0 ] || fail "clang-tidy found what is named above"
