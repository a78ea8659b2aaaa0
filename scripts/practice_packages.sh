#!/usr/bin/env bash
# Lays out the practice packages in a Wine prefix: programs that only write down how they were called and add a modem to
# the practice line, and driver files that drive nothing.
#   scripts/practice_packages.sh DIR [PROGRAMS]    PROGRAMS: where practice_installer.exe and MODEM.CPL were built
# Says nothing and is quick when nothing is to be done. What was taken away to try something comes back only when the
# programs or this script have changed, or with a prefix made anew.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
dir=${1%/} programs=${2:-$(dirname "$here")/build/win32/practice/packages}

[ -f "$programs/practice_installer.exe" ] && [ -f "$programs/MODEM.CPL" ] || exit 0
stamp="$dir/.pelvaro-packages"
wanted=$(cat "$programs/practice_installer.exe" "$programs/MODEM.CPL" "${BASH_SOURCE[0]}" | cksum)
[ "$(cat "$stamp" 2>/dev/null)" != "$wanted" ] || exit 0

packages="$dir/drive_c/Program Files/corvanti/common/driver"
while read -r folder files; do
  mkdir -p "$packages/$folder"
  for file in $files; do
    printf 'A practice file of %s. It drives nothing.\r\n' "${folder//\//\\}" >"$packages/$folder/${file//+/ }"
  done
done <<'END'
MT        mt_port.sys mt_com.sys not_copied.inf
MT/win2k  mt_com.sys USB+serial+port.sys mt_modem.inf
MT/winxp  mt_com.sys mt_modem_xp.inf
NK-A01    nk_cable.sys nk_filter.sys nk_cable.inf nk_modem.inf
SS-A01    ss_cable.sys ss_modem.inf
SS-A02    ss_second.sys ss_second.inf
SM-A02-1  sm_cable.sys sm_modem.inf
SM-A02-2  sm_second.sys sm_second.inf
SE-A01    se_cable.sys se_cable.inf se_modem.inf
NK-A02
SS-A03
SE
END
for program in 'PL-2303 Driver Installer.exe' NK-A02/DPInst.exe SS-A03/DPInst.exe SE/DPInst.exe; do
  cp "$programs/practice_installer.exe" "$packages/$program"
done
cp --remove-destination "$programs/MODEM.CPL" "$dir/drive_c/windows/system32/MODEM.CPL"
printf '%s\n' "$wanted" >"$stamp"
