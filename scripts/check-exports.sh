#!/usr/bin/env bash
# usage: check-exports.sh LIBRARY — the plug-in exports one function and nothing else.
set -eu
exported=$(nm -D --defined-only "$1" | awk '{print $3}')
[ "$exported" = PLUGIN_GetInfoStruct ] || { printf 'exports are:\n%s\n' "$exported"; exit 1; }
