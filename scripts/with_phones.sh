#!/usr/bin/env bash
# Runs one Windows program for the tests as wine_run.sh does, with phones on serial ports of the same prefix meanwhile:
#   scripts/with_phones.sh PROGRAM.exe [ARGUMENT...]
# COM12 a Nokia, COM13 occupied, COM14 no serial port. PELVARO_CONTROL names the pipe that takes commands for the phones.
# The ports are not those of the practice line's own tests, which may run in the same prefix at the same time.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
. "$here/wine_prefix.sh"

prefix="${PELVARO_TEST_PREFIX:-$(dirname "$here")/build/prefix-test}"
exchange="${PELVARO_BUILD:-$(dirname "$here")/build}/native/practice/phone_exchange"
[ -x "$exchange" ] || fail "the phones are not built: $exchange"
winePrefixMake "$prefix" test >&2

dir=$(mktemp -d)
export PELVARO_CONTROL="$dir/control"
phones=
cleanUp() {
  [ -z "$phones" ] || { kill "$phones" 2>/dev/null || true; wait "$phones" 2>/dev/null || true; }
  rm -rf "$dir" "$prefix/dosdevices/com14"
}
trap cleanUp EXIT
ln -sfn /dev/null "$prefix/dosdevices/com14"
"$exchange" --prefix "$prefix" --control "$PELVARO_CONTROL" --with-pid $$ COM12=nokia </dev/null >"$dir/log" 2>&1 &
phones=$!
for ((i = 0; i < 200; i++)); do
  ! grep -q '^ready' "$dir/log" || break
  kill -0 "$phones" 2>/dev/null || { cat "$dir/log" >&2; fail "the phones do not start"; }
  sleep 0.05
done
echo 'occupy COM13' >"$PELVARO_CONTROL"
"$here/wine_run.sh" "$@"
