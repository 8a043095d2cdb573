#!/usr/bin/env bash
# usage: tour.sh WTARN FOLDER — a walk through the plug-in on the built-in drive. What it writes lands in FOLDER.
set -eu
wtarn=$1
folder=$2
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"

say() { printf '\n--- %s\n' "$*"; }

say "The analyses that PELIX offers for the built-in drive"
"$wtarn" -e run -e tree

say "A report on the screen: the capacity selection check"
"$wtarn" -e 'activate "ANALYSIS\CSC ERROR FLAG"' -e show -e 'key Esc'

say "The same report pulled into numbered files with nobody at the screen: from the drive, from an MCF image,"
say "from record files and from an MCW image"
"$wtarn" --make-mcw image.mcw --model 64
cat >tour.txt <<'SCRIPT'
pelixnewdatadir
pelixnewdatafile ""
pelixgetdata "ANALYSIS\CSC ERROR FLAG" "" ""

answer "image.mcf"
activate "M/C DATA\DISK TO MCF"
activate "PELIX Config"
click 1030
set 1041 "image.mcf"
click 1
pelixnewdatafile ""
pelixgetdata "ANALYSIS\CSC ERROR FLAG" "" ""

answer "image.mcf"
activate "M/C DATA\MCF TO FILE"
activate "PELIX Config"
click 1031
click 1
pelixnewdatafile ""
pelixgetdata "ANALYSIS\CSC ERROR FLAG" "" ""

activate "PELIX Config"
click 1078
set 1041 "image.mcw"
click 1
pelixnewdatafile ""
pelixgetdata "ANALYSIS\CSC ERROR FLAG" "" ""
SCRIPT
"$wtarn" tour.txt 2>/dev/null
for file in */*.txt; do
  cmp -s "$file" "$(ls ./*/*-0000.txt)" || { echo "$file differs from the first: the sources disagree" >&2; exit 1; }
done

say "The four files are the same to the byte. Here is the first:"
cat ./*/*-0000.txt

say "Everything that was written is in $folder:"
ls -d ./*/* image.* tour.txt
printf '(and %s record files)\n' "$(find . -maxdepth 1 -name '*.bin*' | wc -l)"
say "Next: ./run --help, docs/user-guide.md, docs/stand-in.md"
