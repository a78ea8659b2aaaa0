#!/usr/bin/env bash
# What the shipped exe may be: its size, the DLLs and functions that it imports (all on Windows XP), its hardening, its
# version. And what is packed of it: the version of the setup program, and the same bytes when it is made again.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

exe=build/dist/pelvaro.exe
[ -f "$exe" ] || fail "$exe is missing: run scripts/build.sh"
dump=$(i686-w64-mingw32-objdump -p "$exe")

size=$(stat -c %s "$exe")
[ "$size" -lt $((2 * 1024 * 1024)) ] || fail "$exe has $size bytes, over 2 MiB"

allowed="ADVAPI32.dll COMCTL32.DLL GDI32.dll KERNEL32.dll USER32.dll msvcrt.dll"
for dll in $(sed -n 's/.*DLL Name: //p' <<<"$dump"); do
  grep -qiw "$dll" <<<"$allowed" || fail "$exe imports $dll"
done
# Functions that Windows XP lacks and that the compiler's own libraries like to use.
for name in GetTickCount64 InitializeConditionVariable InitializeSRWLock AcquireSRWLockExclusive FlsAlloc TryAcquireSRWLock \
  SetDllDirectoryA InitOnceExecuteOnce SleepConditionVariableSRW GetSystemTimePreciseAsFileTime InitializeCriticalSectionEx; do
  ! grep -qw "$name" <<<"$dump" || fail "$exe imports $name, which Windows XP does not have"
done
for mark in DYNAMIC_BASE NX_COMPAT; do
  grep -qw "$mark" <<<"$dump" || fail "$exe lacks $mark"
done
# What is moved needs to know where its addresses stand.
[ "$(i686-w64-mingw32-objdump -h "$exe" | grep -cw '\.reloc')" = 1 ] && ! grep -q 'relocations stripped' <<<"$dump" ||
  fail "$exe cannot be moved in memory: it has no relocations"
grep -qa 'stack smashing detected' "$exe" || fail "$exe has no stack protection"
unprotected=$(for library in build/win32/src/*/libpelvaro_*.a build/win32/src/*/*/libpelvaro_*.a; do
  i686-w64-mingw32-nm "$library" 2>/dev/null | grep -c 'U ___stack_chk_fail' >/dev/null || echo "$library"
done)
[ -z "$unprotected" ] || fail "built without stack protection: $unprotected"
grep -qE 'MajorSubsystemVersion[[:space:]]+5' <<<"$dump" && grep -qE 'MinorSubsystemVersion[[:space:]]+1$' <<<"$dump" ||
  fail "$exe does not name Windows XP as its oldest system"
# No section may be both written and executed.
i686-w64-mingw32-objdump -h "$exe" | awk '/^ +[0-9]+ /{name=$2; getline; if (/CODE/ && !/READONLY/) {print name; exit 1}}' ||
  fail "$exe has a section that is written and executed"
for words in 'requestedExecutionLevel level="asInvoker" uiAccess="false"' 'name="Microsoft.Windows.Common-Controls" version="6.'; do
  grep -qaF "$words" "$exe" || fail "the manifest of $exe lacks $words"
done
[ "$(grep -aoF '<requestedExecutionLevel' "$exe" | wc -l)" = 1 ] || fail "$exe asks for its rights more than once"

version=$(sed -n 's/^project(pelvaro VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
setup=build/pelvaro-setup.exe
[ -f "$setup" ] || fail "$setup is missing: run scripts/build.sh"
hasText() { # FILE NAME [TEXT]: the version information has such a text, or any
  local text
  text=$(i686-w64-mingw32-strings -el "$1" | awk -v name="$2" 'take { print } { take = !seen && $0 == name; seen += take }')
  [ -n "$text" ] && [ "${3:-$text}" = "$text" ] || fail "$1 says \"$text\" for $2, not \"${3:-something}\""
}
for file in "$exe" "$setup"; do
  for name in FileVersion ProductVersion; do hasText "$file" $name "$version"; done
  for name in CompanyName FileDescription LegalCopyright ProductName; do hasText "$file" $name; done
  hasText "$file" OriginalFilename "$(basename "$file")"
done
grep -qa "name=\"Pelvaro\" version=\"$version.0\"" "$exe" || fail "the manifest of $exe does not say $version"
scripts/check_reproducible.sh
echo "1 test passed: $exe, $size bytes, imports $(sed -n 's/.*DLL Name: //p' <<<"$dump" | tr '\n' ' ')"
