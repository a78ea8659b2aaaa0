#!/usr/bin/env bash
# Sets up what is missing, builds, and starts Pelvaro on the practice line: a stand-in dial-up service with simulated
# phones, so that everything can be tried without a phone and without Windows.
#   ./run.sh            the program on your display; without a display a guided tour with screenshots
#   ./run.sh --tour     the guided tour
#   ./run.sh --build    stop after the build, with build/dist/ complete
set -euo pipefail
cd "$(dirname "$0")"
. scripts/common.sh

case "${1:-}" in
  "" | --tour | --build) ;;
  --help | -h) sed -n '2,7s/^# //p' "$0"; exit 0 ;;
  *) fail "unknown option $1 (./run.sh --help)" ;;
esac
scripts/setup.sh
scripts/build.sh
[ "${1:-}" != --build ] || exit 0
scripts/wine_canary.sh
if [ "${1:-}" = --tour ] || [ -z "${DISPLAY:-}" ]; then
  exec scripts/tour.sh
fi

. scripts/wine_prefix.sh
prefix="$PWD/build/prefix-practice"
scripts/practice_prefix.sh "$prefix" --managed Y
trap 'wineStop "$prefix"' EXIT
wineStart "$prefix"
build/native/practice/phone_exchange --prefix "$prefix" --phones sandbox/phones --control build/phones.fifo \
  --with-pid $$ COM5=nokia COM7=samsung >build/phones.log 2>&1 &
say "two phones are plugged in. User name: guest, password: practice."
say "pull the first one's cable: echo 'unplug COM5' >build/phones.fifo   (sandbox/README.md has more)"
status=0
WINEPREFIX="$prefix" "$WINELOADER" build/dist/pelvaro.exe >build/pelvaro.log 2>&1 || status=$?
exit $status
