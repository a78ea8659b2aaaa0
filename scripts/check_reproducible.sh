#!/usr/bin/env bash
# The same sources give the same bytes: links the program, and packs the setup program and the portable archive, a second
# time from copies in another folder, and compares. --full builds all of it from a copy of the sources, which takes minutes.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

[ -f build/win32/packages/pelvaro-setup.exe ] || fail "the packages are not built: run scripts/build.sh"
again=$(mktemp -d)
trap 'rm -rf "$again"' EXIT
old="$PWD/build/win32" new="$again/a folder/win32"
results=(dist/pelvaro.exe dist/Default.DAT dist/loading.avi dist/manual.html packages/pelvaro-setup.exe packages/pelvaro-portable.zip)

if [ "${1:-}" = --full ]; then
  mkdir -p "$again/a folder"
  git ls-files -coz --exclude-standard | xargs -0 sh -c 'for f; do [ ! -e "$f" ] || printf "%s\0" "$f"; done' sh |
    tar -c --null -T - | tar -x -C "$again/a folder"
  new="$again/a folder/build/win32"
  ( cd "$again/a folder" && cmake --preset win32 && cmake --build build/win32 --target packages ) >"$again/log" 2>&1 ||
    { tail -n 20 "$again/log" >&2; fail "the second build failed"; }
else
  results=(dist/pelvaro.exe packages/pelvaro-setup.exe packages/pelvaro-portable.zip)
  mkdir -p "$new/dist" "$new/packages"
  cp build/win32/dist/{Default.DAT,loading.avi,manual.html} "$new/dist/"
  cp build/win32/packages/{Licence.txt,head.bmp,side.bmp} "$new/packages/"
  # The build's own last commands, for other places.
  ninja -C build/win32 -t commands packages >"$again/commands"
  repeat() { # WORD: the command that has it
    grep -F -- "$1" "$again/commands" | tail -n 1 |
      sed "s#$old/\(dist\|packages\)#'$new'/\1#g; s#-o dist/#-o '$new'/dist/#; s#--out-implib,[^ ]*#--out-implib,'$again'/unused.a#" \
        >"$again/command"
    [ -s "$again/command" ] && ( cd build/win32 && sh "$again/command" ) >"$again/log" 2>&1 ||
      { tail -n 20 "$again/log" >&2; fail "cannot repeat $1"; }
  }
  repeat ' -o dist/pelvaro.exe '
  repeat make_portable.py
  repeat setup.nsi
fi
for result in "${results[@]}"; do
  cmp "$old/$result" "$new/$result" || fail "$result is not the same when it is made again"
done
echo "${#results[@]} files are the same when they are made again"
