# Places and words that every script of the project shares. Sourced, never run.
cacheDir="${PELVARO_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/pelvaro}"
wineTree="$cacheDir/wine32"

say() { printf '%s\n' "pelvaro: $*"; }
fail() { printf '%s\n' "pelvaro: $*" >&2; exit 1; }
