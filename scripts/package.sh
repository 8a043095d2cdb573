#!/usr/bin/env bash
# usage: package.sh — builds the Windows side and leaves the ZIP for its users, and the ZIP's checksum, in out/.
set -eu
here=$(realpath "$(dirname "$0")")
"$here/build-windows.sh" pelix wtarn wtarnc
cd "$here/.."
(cd build/windows-x86 && "$here/quietly.sh" cpack -B "$here/../out/package")
mv out/package/*.zip* out/
rm -rf out/package
ls out/*.zip*
