#!/usr/bin/env bash
# Fails with one line of cause unless programs really run and draw under this machine's Wine:
#   scripts/wine_canary.sh [CANARY.exe]     (build/win32/tests/canary.exe when not given)
# Remembers a good answer until the canary, the prefix recipe or the Wine changes.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
. "$here/wine_prefix.sh"
exe="${1:-$(dirname "$here")/build/win32/tests/canary.exe}"
[ -f "$exe" ] || fail "the canary is not built: $exe"

seen="$winePrefixRecipe $(stat -c '%Y %i' "$wineTree/.complete") $(cksum <"$exe")"
stamp="$cacheDir/canary"
[ "$(cat "$stamp" 2>/dev/null)" != "$seen" ] || exit 0

code=0
timeout 120 "$here/wine_run.sh" "$exe" >/dev/null 2>"$stamp.log" || code=$?
case $code in
  7) printf '%s\n' "$seen" >"$stamp" ;;
  0) fail "Wine runs nothing and reports success: its prefix or its tree is broken ($wineTree)" ;;
  11 | 12 | 13 | 14 | 15) fail "this Wine runs programs but cannot draw (canary step $code): a genuine 32-bit Wine is needed" ;;
  124) fail "the canary hung under Wine for two minutes" ;;
  *) fail "the canary did not run under Wine: exit code $code $(tail -n 1 "$stamp.log")" ;;
esac
