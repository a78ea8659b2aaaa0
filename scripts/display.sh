# A virtual display of a fixed size, for screenshots and driven runs. Sourced.
#
#   displayStart [openbox]   starts it on a free number and exports DISPLAY; with a window manager when told so
#   displayShot FILE.png     a picture of the whole screen
#   displayStop              ends exactly what displayStart started
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

displayServerPid= displayManagerPid=

displayStart() {
  local dir number= i
  command -v Xvfb >/dev/null || fail "Xvfb is missing: run scripts/setup.sh first"
  dir=$(mktemp -d)
  : >"$dir/number"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$dir/number" </dev/null >"$dir/log" 2>&1 &
  displayServerPid=$!
  for ((i = 0; i < 200; i++)); do # the number, with its line end, is written when the display takes clients
    [ "$(wc -l <"$dir/number")" = 0 ] || { number=$(cat "$dir/number"); break; }
    kill -0 "$displayServerPid" 2>/dev/null || break
    sleep 0.05
  done
  [ -n "$number" ] || { tail -n 5 "$dir/log" >&2; rm -rf "$dir"; displayStop; fail "the virtual display does not start"; }
  rm -rf "$dir"
  export DISPLAY=":$number"
  if [ "${1:-}" = openbox ]; then
    openbox --sm-disable </dev/null >/dev/null 2>&1 &
    displayManagerPid=$!
    for ((i = 0; i < 200; i++)); do # it manages windows once it has put its name on the root window
      ! xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' || return 0
      sleep 0.05
    done
    displayStop
    fail "the window manager does not start"
  fi
}

displayShot() {
  mkdir -p "$(dirname "$1")"
  import -window root "$1"
}

displayStop() {
  local pid
  for pid in $displayManagerPid $displayServerPid; do
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
  displayManagerPid= displayServerPid=
  unset DISPLAY
}
