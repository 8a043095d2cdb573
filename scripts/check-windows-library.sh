#!/usr/bin/env bash
# usage: check-windows-library.sh LIBRARY — what a host's loader relies on, read from the built file: one undecorated
# export, nothing imported besides the system's own libraries and the host's, 32-bit code that may lie anywhere and data
# that never runs.
set -eu
headers=$(i686-w64-mingw32-objdump -p "$1")
failed=0
expect() { # WHAT EXPECTED FOUND
  [ "$2" = "$3" ] && return
  printf '%s: expected\n%s\nfound\n%s\n' "$1" "$2" "$3"
  failed=1
}

expect format pei-i386 "$(i686-w64-mingw32-objdump -f "$1" | sed -n 's/.*file format //p')"
expect exports PLUGIN_GetInfoStruct "$(sed -n '/^\[Ordinal\/Name Pointer\]/,/^$/s/^\t\[ *[0-9]*\] //p' <<<"$headers")"
expect imports 'comctl32.dll comdlg32.dll gdi32.dll kernel32.dll msvcrt.dll user32.dll wtarn-host.dll' \
  "$(sed -n 's/^\tDLL Name: //p' <<<"$headers" | tr 'A-Z' 'a-z' | sort | xargs)"
# IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE and _NX_COMPAT; relocations, without which the first is an empty word.
characteristics=$((16#$(sed -n 's/^DllCharacteristics\t*//p' <<<"$headers")))
expect 'address-space randomisation and no-execute' $((0x140)) $((characteristics & 0x140))
relocations=$(sed -n 's/^Entry 5 [0-9a-f]* \([0-9a-f]*\) Base Relocation.*/\1/p' <<<"$headers")
expect 'relocations' yes "$([ $((16#$relocations)) -gt 8 ] && echo yes || echo no)"
exit $failed
