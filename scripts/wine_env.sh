# The surroundings in which every Wine process of the project runs, whatever its prefix. Sourced, never run.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[ -f "$wineTree/.complete" ] || fail "the 32-bit Wine is missing: run scripts/setup.sh first"

export WINEARCH=win32
export WINELOADER="$wineTree/usr/lib/wine/wine"
export WINESERVER="$wineTree/usr/lib/wine/wineserver32"
export WINEDEBUG="${PELVARO_WINEDEBUG:--all}" # err+all,+winediag shows why something prints nothing
# No prompts for .NET and a browser engine, no menu entries in the user's desktop.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
