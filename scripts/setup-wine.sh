#!/usr/bin/env bash
# Sets up a 32-bit Wine that runs in place, and a template prefix, in PELIX_WINE_DIR. Half a minute, once; needs no root
# and changes nothing on the machine.
set -euo pipefail
here=$(realpath "$(dirname "$0")")
. "$here/windows-env.sh"
stamp=$PELIX_WINE_DIR/ready-1
[ -e "$stamp" ] && exit 0
echo "setting up 32-bit Wine in $PELIX_WINE_DIR"
rm -rf "$PELIX_WINE_DIR"
mkdir -p "$wine_root"

view=$PELIX_WINE_DIR/apt
conf=$("$here/apt-view.sh" "$view" i386)
APT_CONFIG=$conf timeout 600 apt-get -qq -y --download-only install wine32 fonts-wine >&2
for package in "$view"/cache/archives/*.deb; do dpkg-deb -x "$package" "$wine_root"; done
rm -rf "$view"

# What the packages' own installation would do: Wine takes zlib1.dll only when it is marked as one of its own.
builtin=$wine_root/usr/lib/i386-linux-gnu/wine/i386-windows
zlib=$wine_root/usr/i686-w64-mingw32/lib/zlib1.dll
{ head -c 64 "$zlib"; printf 'Wine builtin DLL\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0'; tail -c +97 "$zlib"; } >"$builtin/zlib1.dll"
# Less than half the size without debug sections, and so is every prefix.
for file in "$builtin"/*; do i686-w64-mingw32-strip --strip-debug "$file" 2>/dev/null || true; done
# The tree's own loader and server, whatever else is on the machine.
for program in wine wineserver32; do
  patchelf --set-interpreter "$wine_root/lib/ld-linux.so.2" "$wine_root/usr/lib/wine/$program"
done
ln -sf wineserver32 "$wine_root/usr/lib/wine/wineserver"

export LD_LIBRARY_PATH=$wine_libraries WINEPREFIX=$PELIX_WINE_DIR/prefix WINEARCH=win32 WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
wine() { timeout 120 "$wine_root/usr/lib/wine/wine" "$@"; }
wait_for_server() { timeout 60 "$wine_root/usr/lib/wine/wineserver" -w; }
wine wineboot -i
wait_for_server
# Debian's Wine looks for its fonts in a folder where they are not.
cp "$wine_root"/usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/"
# Without a window manager a managed window takes two seconds to go away.
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
wait_for_server
touch "$stamp"
