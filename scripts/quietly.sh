#!/usr/bin/env bash
# usage: quietly.sh COMMAND... — runs it and shows what it printed only when it fails: the errors, else the end of it.
log=$(mktemp)
trap 'rm -f "$log"' EXIT
"$@" >"$log" 2>&1 && exit 0
status=$?
errors=$(grep -E -A3 'error|FAILED|undefined|CMake Error' "$log" | head -60)
if [ -n "$errors" ]; then echo "$errors" >&2; else tail -40 "$log" >&2; fi
exit $status
