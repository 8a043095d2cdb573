#!/usr/bin/env bash
# usage: show-window.sh PROGRAM.EXE ARGS... — runs a program with windows under Wine until it ends, on this session's
# display or, where there is none, on a virtual one.
set -eu
here=$(realpath "$(dirname "$0")")
if [ -n "${DISPLAY:-}" ]; then
  "$here/need-packages.sh" x11-utils >&2
  export PELIX_DISPLAY=$DISPLAY
  exec "$here/wine-session.sh" env WINE_TIMEOUT=0 "$here/wine-run.sh" "$@"
fi
"$here/need-packages.sh" imagemagick >&2
exec "$here/wine-session.sh" bash -c '
  echo "There is no display here; the window opens on the virtual display $DISPLAY. A picture of it:" >&2
  echo "  import -display $DISPLAY -window root window.png" >&2
  WINE_TIMEOUT=0 exec "$@"' bash "$here/wine-run.sh" "$@"
