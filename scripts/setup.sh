#!/usr/bin/env bash
# Installs what building, running and testing Pelvaro needs on Debian 12: packages, and a genuine 32-bit Wine
# in the user's cache folder. Says nothing and takes well under a second when all is there.
# Used by run.sh and test.sh; ends non-zero with one line of cause when something cannot be had.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/common.sh

packages=(ca-certificates git make cmake ninja-build g++ gcc-mingw-w64-i686-posix g++-mingw-w64-i686-posix
  googletest libgtest-dev clang-14 libclang-rt-14-dev clang-tidy-14 clang-format-14 llvm-14
  gcovr patchelf xvfb xdotool openbox x11-utils imagemagick librsvg2-bin icoutils nsis python3 python3-markdown
  fontconfig)

missingPackages() {
  dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null |
    awk '$2 == "installed" { print $1 }' | sort >"$1/have"
  printf '%s\n' "${packages[@]}" | sort >"$1/want"
  comm -23 "$1/want" "$1/have"
}

installPackages() {
  local scratch missing
  scratch=$(mktemp -d)
  missing=$(missingPackages "$scratch")
  rm -rf "$scratch"
  [ -n "$missing" ] || return 0
  say "installing packages: $(echo $missing)"
  local sudo=
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || fail "packages are missing ($(echo $missing)) and neither root nor sudo is at hand"
    sudo="sudo"
  fi
  local log="$cacheDir/apt.log"
  local apt="$sudo env DEBIAN_FRONTEND=noninteractive LC_ALL=C apt-get -qq -o DPkg::Lock::Timeout=600 -o Acquire::Retries=3"
  $apt update >"$log" 2>&1 || true
  $apt install -y --no-install-recommends $missing >>"$log" 2>&1 </dev/null ||
    { tail -n 20 "$log" >&2; fail "the packages could not be installed: see $log"; }
}

# The closure of Debian's own 32-bit Wine, fetched with an apt state of its own (the system's stays as it is),
# unpacked into the cache folder and pointed at its own loader and libraries. Needs no amd64 Wine.
installWine() {
  [ ! -f "$wineTree/.complete" ] || return 0
  say "fetching the 32-bit Wine into $wineTree"
  local t log L W z
  # Left by a fetch that was killed outright; a younger one may be another run's.
  find "$cacheDir" -mindepth 1 -maxdepth 1 -type d -name 'wine.??????' -mmin +1440 -exec rm -rf {} +
  fetchDir=$(mktemp -d "$cacheDir/wine.XXXXXX")
  trap 'rm -rf "$fetchDir"' EXIT # however this ends
  t=$fetchDir
  log="$cacheDir/wine.log"
  mkdir -p "$t/lists/partial" "$t/cache/archives/partial" "$t/tree"
  : >"$t/status"
  local opts=(-qq -o Dir::State::status="$t/status" -o Dir::State::lists="$t/lists"
    -o Dir::State::extended_states="$t/ext" -o Dir::Cache="$t/cache" -o APT::Architecture=i386
    -o APT::Architectures=i386 -o APT::Sandbox::User=root -o APT::Install-Recommends=false
    -o Debug::NoLocking=1 -o APT::Keep-Downloaded-Packages=true -o DPkg::Post-Invoke=: -o Acquire::Retries=3)
  apt-get "${opts[@]}" update >"$log" 2>&1 || true # one broken suite does not matter: main is enough
  apt-get "${opts[@]}" -y --download-only install wine32 fonts-wine fonts-liberation libxcursor1 libxi6 \
    libxrandr2 libxrender1 libxcomposite1 libxinerama1 libxfixes3 libgnutls30 >>"$log" 2>&1 </dev/null ||
    { tail -n 20 "$log" >&2; fail "the 32-bit Wine could not be fetched: see $log"; }
  for d in "$t"/cache/archives/*.deb; do
    dpkg-deb --fsys-tarfile "$d" | tar -x -C "$t/tree" --no-same-owner \
      --exclude=./usr/share/doc --exclude=./usr/share/man --exclude=./usr/share/locale
  done
  cp -a "$t/tree/lib/." "$t/tree/usr/lib/"
  rm -rf "$t/tree/lib"
  L=usr/lib/i386-linux-gnu W="$t/tree/$L/wine/i386-windows" z="$t/tree/usr/i686-w64-mingw32/lib/zlib1.dll"
  { head -c 64 "$z"; printf 'Wine builtin DLL'; head -c 16 /dev/zero; tail -c +97 "$z"; } >"$W/zlib1.dll"
  find "$W" -type f -exec i686-w64-mingw32-strip -S {} + # 550 -> 197 MB; Wine's own markers survive
  for b in wine wineserver32; do
    patchelf --set-interpreter "$wineTree/$L/ld-linux.so.2" --force-rpath --set-rpath "$wineTree/$L" "$t/tree/usr/lib/wine/$b"
  done
  ln -sfn wineserver32 "$t/tree/usr/lib/wine/wineserver"
  rm -rf "$wineTree"
  mv "$t/tree" "$wineTree"
  "$wineTree/usr/lib/wine/wine" --version >/dev/null 2>&1 ||
    fail "the 32-bit Wine does not start here: the kernel must run 32-bit programs (CONFIG_IA32_EMULATION)"
  touch "$wineTree/.complete"
}

mkdir -p "$cacheDir"
installPackages
installWine
