#!/usr/bin/env bash
# usage: wine-session.sh COMMAND... — runs a command in a Wine session of its own: a fresh prefix, a virtual display of
# PELIX_DPI dots an inch (or the display that PELIX_DISPLAY names), a server; all gone at the end.
set -u
here=$(realpath "$(dirname "$0")")
. "$here/windows-env.sh"
session=$(mktemp -d)
cp -a "$PELIX_WINE_DIR/prefix" "$session/prefix"
export WINEPREFIX=$session/prefix WINEARCH=win32 WINEDEBUG=${WINEDEBUG--all}
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=;winedbg.exe="
server() { LD_LIBRARY_PATH=$wine_libraries timeout 20 "$wine_root/usr/lib/wine/wineserver" "$@"; }
set_key() { LD_LIBRARY_PATH=$wine_libraries timeout 60 "$wine_root/usr/lib/wine/wine" reg add "$@" /f >/dev/null; }
display=
cleanup() {
  local status=$? process
  server -k >/dev/null 2>&1
  server -w >/dev/null 2>&1
  [ -n "$display" ] && kill "$display" 2>/dev/null && wait "$display" 2>/dev/null
  unset WINEPREFIX # what runs below is none of the session's own
  for process in $(grep -lsz "^WINEPREFIX=$session/" /proc/[0-9]*/environ | cut -d/ -f3); do
    echo "wine-session: left running: $(tr '\0' ' ' <"/proc/$process/cmdline")" >&2
    kill -9 "$process"
    status=1
  done
  rm -rf "$session"
  exit $status
}
trap cleanup EXIT
if [ -n "${PELIX_DISPLAY:-}" ]; then
  export DISPLAY=$PELIX_DISPLAY
  # Somebody's desktop has a window manager, which draws the frames; a bare display has none.
  if ! command -v xprop >/dev/null || xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; then
    set_key 'HKCU\Software\Wine\X11 Driver' /v Managed /d Y
  fi
else
  Xvfb -displayfd 1 -screen 0 "${PELIX_SCREEN:-1280x1024x24}" -dpi "${PELIX_DPI:-96}" -nolisten tcp \
    >"$session/display" 2>"$session/xvfb.log" &
  display=$!
  for _ in $(seq 100); do [ -s "$session/display" ] && break; sleep 0.05; done
  [ -s "$session/display" ] || { echo "wine-session: no virtual display" >&2; cat "$session/xvfb.log" >&2; exit 1; }
  DISPLAY=:$(cat "$session/display")
  export DISPLAY
fi
if [ "${PELIX_DPI:-96}" != 96 ]; then
  set_key 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$PELIX_DPI"
  server -k
  server -w
fi
server -p600 # keeps the server between programs: they start faster
"$@"
