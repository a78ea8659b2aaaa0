#!/usr/bin/env bash
# Kills the shipped program at random moments while it saves the operator list, writes an entry, renames one and installs
# a driver, and looks each time whether what it keeps is whole and whether it starts again:
#   scripts/kills.sh [N] [SEED]   N times of each kind (100, about two minutes a kind); SEED repeats the moments of a run
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
. "$here/common.sh"

count=${1:-100}
[[ "$count" =~ ^[1-9][0-9]*$ && "${2:-1}" =~ ^[1-9][0-9]*$ ]] || fail "usage: scripts/kills.sh [N] [SEED]"
export PELVARO_KILLS=$count PELVARO_SEED=${2:-}
exec "$here/e2e.sh" --limit $((300 + 10 * count)) strength_e2e.Kills
