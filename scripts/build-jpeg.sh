#!/usr/bin/env bash
# Cross-builds libjpeg (library version 62) for 32-bit Windows from the distribution's source package into
# PELIX_JPEG_DIR. A quarter of a minute, once.
set -euo pipefail
here=$(realpath "$(dirname "$0")")
. "$here/windows-env.sh"
stamp=$PELIX_JPEG_DIR/ready-1
[ -e "$stamp" ] && exit 0
echo "building libjpeg for Windows in $PELIX_JPEG_DIR"
rm -rf "$PELIX_JPEG_DIR"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
conf=$("$here/apt-view.sh" "$work/apt" source)
cd "$work"
APT_CONFIG=$conf apt-get -qq source libjpeg-turbo >/dev/null 2>"$work/source.log" || { cat "$work/source.log" >&2; exit 1; }
source=$(find "$work" -maxdepth 1 -type d -name 'libjpeg-turbo-*')
cmake -S "$source" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$here/../cmake/windows/i686-w64-mingw32.cmake" \
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$PELIX_JPEG_DIR" -DENABLE_SHARED=0 -DENABLE_STATIC=1 \
  -DWITH_SIMD=0 -DWITH_JPEG7=0 -DWITH_JPEG8=0 -DWITH_TURBOJPEG=0 -DWITH_JAVA=0 >"$work/log" 2>&1 &&
  ninja -C "$work/build" install >>"$work/log" 2>&1 || { tail -30 "$work/log" >&2; exit 1; }
touch "$stamp"
