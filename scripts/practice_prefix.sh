#!/usr/bin/env bash
# Makes, or brings up to date, a Wine prefix with the practice line in it:
#   scripts/practice_prefix.sh DIR [--kind practice|e2e] [--managed Y|N] [--dpi N] [--dlls FOLDER] [--fresh]
# Its registry names the stand-in DLLs, so that the program runs in it untouched and without any environment. That of
# iphlpapi.dll is for pelvaro.exe alone: Wine's own programs and DLLs need more of it than the stand-in has. It also
# names modem drivers, as an installation of each would, for the practice phones of known makers. The practice packages
# are laid out in it, when they are built.
# --managed Y is for a display with a window manager. --fresh throws an existing prefix away first.
# Says nothing and is quick when nothing is to be done. Changed settings are seen by programs started later;
# dpi and managed need a new server (wineStop in wine_prefix.sh).
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
. "$here/wine_prefix.sh"

dir= kind=practice managed=N dpi=96 dlls="$(dirname "$here")/build/win32/practice" fresh=
while [ $# -gt 0 ]; do
  case "$1" in
    --kind) kind=$2; shift ;;
    --managed) managed=$2; shift ;;
    --dpi) dpi=$2; shift ;;
    --dlls) dlls=$2; shift ;;
    --fresh) fresh=yes ;;
    -*) fail "practice_prefix.sh: unknown option $1" ;;
    *) dir=${1%/} ;;
  esac
  shift
done
[ -n "$dir" ] || fail "usage: scripts/practice_prefix.sh DIR [--managed Y|N] [--dpi N] [--fresh]"

drivers=("Nokia 6230 USB Modem" "Samsung D500 USB Modem" "Sony Ericsson K700 USB Modem" "Siemens S65 USB Modem"
  "Motorola V3 USB Modem" "Ericsson T39 Serial Modem")
names=$(cd "$dlls" 2>/dev/null && ls -- *.dll 2>/dev/null | sed 's/\.dll$//' || true)
wanted="$(echo $names) managed=$managed dpi=$dpi drivers=${drivers[*]}"
stamp="$dir/.pelvaro-practice"

# A DLL that is no longer there would leave its override behind.
for name in $(sed 's/ *managed=.*//' "$stamp" 2>/dev/null || true); do
  [ -f "$dlls/$name.dll" ] || fresh=yes
done
[ -z "$fresh" ] || winePrefixRemove "$dir"
winePrefixMake "$dir" "$kind"

for name in $names; do
  cmp -s "$dlls/$name.dll" "$dir/drive_c/windows/system32/$name.dll" ||
    cp --remove-destination "$dlls/$name.dll" "$dir/drive_c/windows/system32/$name.dll"
done

if [ "$(cat "$stamp" 2>/dev/null)" != "$wanted" ]; then
  { printf 'REGEDIT4\n'
    for name in $names; do
      key='HKEY_CURRENT_USER\Software\Wine'
      [ "$name" != iphlpapi ] || key+='\AppDefaults\pelvaro.exe'
      printf '\n[%s\\DllOverrides]\n"%s"="native"\n' "$key" "$name"
    done
    printf '\n[HKEY_CURRENT_USER\\Control Panel\\Colors]\n"InactiveTitleText"="216 228 248"\n'
    printf '\n[HKEY_CURRENT_USER\\Software\\Wine\\X11 Driver]\n"Managed"="%s"\n' "$managed"
    printf '\n[HKEY_CURRENT_USER\\Control Panel\\Desktop]\n"LogPixels"=dword:%08x\n' "$dpi"
    printf '\n[HKEY_CURRENT_USER\\Software\\Wine\\Fonts]\n"LogPixels"=dword:%08x\n' "$dpi"
    printf '\n[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Unimodem\\DeviceSpecific\\%s]\n' \
      "${drivers[@]}"
  } | winePrefixSet "$dir"
  printf '%s\n' "$wanted" >"$stamp"
fi
"$here/practice_packages.sh" "$dir"
