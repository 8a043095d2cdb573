#!/usr/bin/env bash
# usage: windows-tools.sh — installs what the Windows build and its tests need: the cross compiler, a virtual display,
# 32-bit Wine and libjpeg. Two minutes on a new machine, nothing the second time. Says what can't be had.
set -eu
here=$(realpath "$(dirname "$0")")
"$here/need-packages.sh" g++-mingw-w64-i686-posix binutils-mingw-w64-i686 cmake ninja-build libcli11-dev googletest \
  dpkg-dev patchelf xvfb
log=$(mktemp)
trap 'rm -f "$log"' EXIT
prepare() { # WHAT WITHOUT_IT COMMAND...: a second try, for package servers have bad moments
  for _ in 1 2; do
    timeout 900 "${@:3}" 2>"$log" && return
  done
  tail -5 "$log" >&2
  echo "$1 can't be had on this machine; without it $2." >&2
  exit 1
}
prepare "32-bit Wine (packages of the i386 architecture)" "nothing of the Windows build can run; ./test native does" \
  "$here/setup-wine.sh"
prepare "libjpeg for Windows (a source package)" "the Windows build is not complete; ./test native runs" \
  "$here/build-jpeg.sh"
