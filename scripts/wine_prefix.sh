# Wine prefixes: one template in the cache folder, cheap hard-linked clones of it, and their servers. Sourced.
#
#   winePrefixMake DIR KIND   DIR becomes a clone of the template unless it is one already.
#                             KIND: test (windows without a display), practice, e2e
#   winePrefixSet DIR         registry settings from standard input (REGEDIT4 text, of the user and the machine)
#   winePrefixRemove DIR      ends its server and deletes it
#   wineStart DIR             a server and its services, detached, so that no caller's pipe is held open
#   wineStop DIR              ends the server and all its programs
#   wineAlive DIR             is a server running?
. "$(dirname "${BASH_SOURCE[0]}")/wine_env.sh"

winePrefixRecipe=1 # raise it with every change of what the template contains
winePrefixTemplate="$cacheDir/prefix-$winePrefixRecipe"

wineAlive() { WINEPREFIX="$1" "$WINESERVER" -k0 >/dev/null 2>&1; }

wineStop() {
  [ -d "$1" ] || return 0
  ! wineAlive "$1" || WINEPREFIX="$1" "$WINESERVER" -k >/dev/null 2>&1 || true
}

# The services that a first Wine process starts inherit its files and outlive it: whoever waits for the end of a
# pipe would wait for them. So they are started here, with nothing inherited, and stay for ten idle minutes.
wineStart() {
  ( flock 9
    if WINEPREFIX="$1" "$WINESERVER" -p600 9>&-; then
      WINEPREFIX="$1" "$WINELOADER" wineboot 9>&-
    fi ) </dev/null >/dev/null 2>&1 9>"${1%/}.lock" || true # 2: one is running already
  wineAlive "$1" || fail "the Wine server of $1 does not start"
}

# Settings go straight into the files of a prefix that sleeps, and through the registry editor when it is awake.
winePrefixSet() {
  if wineAlive "$1"; then
    local text
    text=$(mktemp --suffix=.reg)
    cat >"$text"
    WINEPREFIX="$1" "$WINELOADER" regedit /S "Z:${text//\//\\}" </dev/null >/dev/null 2>&1 ||
      { rm -f "$text"; fail "the registry of $1 cannot be changed"; }
    rm -f "$text"
  else
    awk -v user="$1/user.reg" -v machine="$1/system.reg" '
      /^\[HKEY_CURRENT_USER/ { file = user }
      /^\[HKEY_LOCAL_MACHINE/ { file = machine }
      /^\[/ { sub(/^\[[A-Z_]*\\/, "["); gsub(/\\/, "&&") }
      file { print >>file }'
  fi
}

# Builds the template beside its place and moves it there when all of it is done.
winePrefixTemplateMake() {
  [ ! -f "$winePrefixTemplate/.complete" ] || return 0
  say "making the Windows environment (once)"
  local p log="$cacheDir/prefix.log" link font
  for p in "$cacheDir"/prefix.new.*; do # of a run that was interrupted, its programs perhaps still at work
    [ ! -d "$p" ] || winePrefixRemove "$p"
  done
  p=$(mktemp -d "$cacheDir/prefix.new.XXXXXX")
  ( unset DISPLAY WAYLAND_DISPLAY
    export WINEPREFIX="$p"
    "$WINELOADER" wineboot -i </dev/null >"$log" 2>&1
    "$WINESERVER" -k >>"$log" 2>&1
    [ -f "$p/user.reg" ] && [ -d "$p/drive_c/windows/system32" ] ) ||
    { rm -rf "$p"; fail "Wine cannot make a prefix: see $log"; }
  # The tree's own fonts are not found by themselves.
  for font in "$wineTree"/usr/share/wine/fonts/*.{ttf,fon} "$wineTree"/usr/share/fonts/truetype/liberation/*.ttf; do
    cp -L "$font" "$p/drive_c/windows/Fonts/"
  done
  # The user's folders lead to $HOME: make them folders of the prefix.
  find "$p/drive_c/users" -mindepth 2 -maxdepth 2 -type l | while read -r link; do
    rm "$link" && mkdir "$link"
  done
  winePrefixSet "$p" <<'END'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000

[HKEY_CURRENT_USER\Software\Wine\Drivers]
"Audio"=""

[HKEY_CURRENT_USER\Software\Wine\X11 Driver]
"Managed"="N"

[HKEY_CURRENT_USER\Software\Wine\DllOverrides]
"mscoree"=""
"mshtml"=""
"winemenubuilder.exe"=""
END
  ( unset DISPLAY WAYLAND_DISPLAY # once more, so that the fonts are listed in the registry
    export WINEPREFIX="$p"
    "$WINELOADER" wineboot </dev/null >>"$log" 2>&1
    "$WINESERVER" -k >>"$log" 2>&1 ) || { rm -rf "$p"; fail "the new Wine prefix does not start: see $log"; }
  rm -f "$p/wineserver"
  touch "$p/.complete"
  rm -rf "$winePrefixTemplate"
  mv "$p" "$winePrefixTemplate"
  find "$cacheDir" -mindepth 1 -maxdepth 1 -name 'prefix-*' -type d ! -path "$winePrefixTemplate" -exec rm -rf {} +
}

# Hard links, except for what Wine writes in place: those files would change the template with the clone.
winePrefixClone() {
  local new="${1%/}.new.$$" file
  rm -rf "${1%/}".new.*
  cp -al "$winePrefixTemplate" "$new" 2>/dev/null || { rm -rf "$new"; cp -a "$winePrefixTemplate" "$new"; }
  ( cd "$winePrefixTemplate" && for file in *.reg .update-timestamp drive_c/windows/*.ini; do
      [ ! -f "$file" ] || cp -p --remove-destination "$file" "$new/$file"
    done )
  rm -f "$new/wineserver" "$new/.complete"
  if [ "$2" = test ]; then
    winePrefixSet "$new" <<'END'

[HKEY_CURRENT_USER\Software\Wine\Drivers]
"Graphics"="null"
END
  fi
  printf '%s\n' "$winePrefixRecipe $2" >"$new/.pelvaro-prefix"
  mv "$new" "$1"
}

winePrefixMake() {
  local dir="${1%/}"
  [ "$(cat "$dir/.pelvaro-prefix" 2>/dev/null)" != "$winePrefixRecipe $2" ] || return 0
  mkdir -p "$cacheDir" "$(dirname "$dir")"
  ( flock 9
    winePrefixTemplateMake 9>&-
    [ "$(cat "$dir/.pelvaro-prefix" 2>/dev/null)" != "$winePrefixRecipe $2" ] || exit 0 # another one was quicker
    winePrefixRemove "$dir" 9>&-
    winePrefixClone "$dir" "$2" 9>&- ) 9>"$cacheDir/prefix.lock"
}

winePrefixRemove() {
  wineStop "$1"
  rm -rf "$1" "${1%/}.lock"
}
