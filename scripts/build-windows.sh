#!/usr/bin/env bash
# usage: build-windows.sh [TARGET...] — builds the Windows side, or only those targets of it, with its tools in place.
set -eu
here=$(realpath "$(dirname "$0")")
. "$here/windows-env.sh"
"$here/windows-tools.sh"
targets=()
[ $# -eq 0 ] || targets=(--target "$@")
cd "$here/.."
"$here/quietly.sh" sh -c 'cmake --preset windows-x86 && cmake --build --preset windows-x86 "$@"' sh "${targets[@]}"
