#!/usr/bin/env bash
# usage: wine-run.sh PROGRAM.EXE ARGS... — runs one Windows program inside the current Wine session (wine-session.sh), for
# WINE_TIMEOUT seconds at most. Output goes through files: Wine's own helper processes keep pipes open.
here=$(realpath "$(dirname "$0")")
. "$here/windows-env.sh"
if [ -z "${WINEPREFIX:-}" ]; then exec "$here/wine-session.sh" "$0" "$@"; fi
export LD_LIBRARY_PATH=$wine_libraries
out=$(mktemp) errors=$(mktemp)
timeout -k 2 "${WINE_TIMEOUT:-60}" "$wine_root/usr/lib/wine/wine" "$@" >"$out" 2>"$errors" </dev/null
status=$?
unset LD_LIBRARY_PATH
cat "$out"
grep -v '^wine: Read access denied for device' "$errors" >&2 # said whenever a file dialog looks at the root
rm -f "$out" "$errors"
[ $status = 124 ] && echo "wine-run: killed after ${WINE_TIMEOUT:-60} s" >&2
exit $status
