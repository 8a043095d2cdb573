#!/usr/bin/env bash
# usage: check-package.sh BUILD_FOLDER — makes the ZIP of a Windows build and tries it as its user would: checksums, the
# plug-in's file, a report by the console host out of the unpacked folder.
set -eu
here=$(realpath "$(dirname "$0")")
build=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$build"
"$here/quietly.sh" cpack -B "$work/made"
cd "$work/made"
sha256sum --quiet -c ./*.zip.sha256
mkdir "$work/unpacked"
cd "$work/unpacked"
cmake -E tar xf "$work"/made/*.zip
cd pelix-*
sha256sum --quiet -c SHA256SUMS
listed=$(cut -c67- SHA256SUMS | sort)
there=$(find . -type f ! -name SHA256SUMS | cut -c3- | sort)
[ "$listed" = "$there" ] || { echo "SHA256SUMS does not list what is there"; exit 1; }
for file in README.md LICENSE docs/user-guide.md wtarn.exe; do [ -s "$file" ]; done
"$here/check-windows-library.sh" pelix.dll
shown=$("$here/wine-run.sh" wtarnc.exe -e 'activate "ANALYSIS\CSC ERROR FLAG"' -e show)
[[ $shown == *'CSC Error Flag : 0xc0'* ]] || { printf 'the report reads\n%s\n' "$shown"; exit 1; }
