#!/usr/bin/env bash
# usage: screenshots.sh [FOLDER] — takes the pictures of the guide (docs/images unless told) from the windowed host under
# Wine. PELIX_DPI=144 shows how it looks on a display of that resolution.
set -eu
here=$(realpath "$(dirname "$0")")
. "$here/windows-env.sh"
if [ -z "${WINEPREFIX:-}" ]; then
  "$here/need-packages.sh" xvfb xdotool imagemagick
  "$here/build-windows.sh"
  exec "$here/wine-session.sh" "$0" "$@"
fi
folder=${1:-$here/../docs/images}
mkdir -p "$folder"
folder=$(realpath "$folder")
bin=$(realpath "$here/../build/windows-x86/bin")
work=$(mktemp -d)
cd "$work"
host=
finish() {
  [ -z "$host" ] || kill "$host" 2>/dev/null || true
  rm -rf "$work"
}
trap finish EXIT

start() {
  LD_LIBRARY_PATH=$wine_libraries timeout 60 "$wine_root/usr/lib/wine/wine" "$bin/wtarn.exe" "$@" >/dev/null 2>&1 &
  host=$!
}
stop() {
  LD_LIBRARY_PATH=$wine_libraries timeout 20 "$wine_root/usr/lib/wine/wine" taskkill /f /im wtarn.exe >/dev/null 2>&1 || true
  wait "$host" 2>/dev/null || true
}
# The system's number of the window with that name, once it is there.
window() {
  for _ in $(seq 100); do
    xdotool search --onlyvisible --name "^$1\$" 2>/dev/null && return
    sleep 0.1
  done
  echo "no window \"$1\" came up" >&2
  return 1
}
# Clicks inside a window, and by that gives it the keyboard.
click() { xdotool mousemove --window "$1" "$2" "$3" click 1; }
take() { sleep 1 && import -window "$1" "$folder/$2.png"; }

start -e 'pelixnewdatadir' -e 'pelixgetdata "ANALYSIS\CSC ERROR FLAG" "" ""' -e 'skew 5000 1' -e 'activate "ANALYSIS"'
take "$(window wtarn)" main-window
stop

start -e 'activate "ANALYSIS\CSC ERROR FLAG"'
list=$(window 'CSC Error Report')
# As a user makes it wide enough: by its right side.
eval "$(xdotool getwindowgeometry --shell "$list")"
xdotool mousemove --window "$list" $((WIDTH - 2)) $((HEIGHT / 2)) mousedown 1 mousemove_relative $((WIDTH / 6)) 0 mouseup 1
click "$list" 100 60
xdotool key Down shift+Down shift+Down
take "$list" report
stop

start -e 'activate "PELIX Config"'
dialog=$(window 'PELIX Configuration')
sleep 0.5
eval "$(xdotool getwindowgeometry --shell "$dialog")"
click "$dialog" $((WIDTH * 86 / 100)) $((HEIGHT * 69 / 100))
take "$dialog" configuration
stop
