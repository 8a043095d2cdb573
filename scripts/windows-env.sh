# Where the Windows side keeps what it needs besides packages. Sourced by the scripts; each folder may be overridden.
: "${PELIX_WINE_DIR:=${XDG_CACHE_HOME:-$HOME/.cache}/pelix-wine32}"   # 32-bit Wine and a template prefix
: "${PELIX_JPEG_DIR:=${XDG_CACHE_HOME:-$HOME/.cache}/pelix-jpeg-w32}" # libjpeg for Windows
export PELIX_WINE_DIR PELIX_JPEG_DIR
wine_root=$PELIX_WINE_DIR/root
wine_libraries=$wine_root/usr/lib/i386-linux-gnu:$wine_root/lib/i386-linux-gnu
