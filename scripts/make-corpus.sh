#!/usr/bin/env bash
# usage: make-corpus.sh WTARN FOLDER — writes the seeds of the fuzz targets into FOLDER/images and FOLDER/statements.
set -eu
root=$(realpath "$(dirname "$0")/..")
wtarn=$(realpath "$1")
mkdir -p "$2/images" "$2/statements"
out=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# Statements: those of the tests.
cp "$root"/tests/console/*.case "$out/statements/"

# Images: a byte that says which kind, a byte for the heads, then the bytes of a real one, cut short.
seed() { { printf "$1\\002"; head -c "$3" "$2"; } >"$out/images/$4"; }
"$wtarn" --make-mcw whole.mcw --model 50
"$wtarn" --drive sim:50 -e 'answer "whole.mcf"' -e 'activate "M/C DATA\DISK TO MCF"' \
  -e 'activate "M/C DATA\DISK TO FILE"' >/dev/null 2>&1
seed '\000' whole.mcf 8192 mcf_head
seed '\000' whole.mcf 40000 mcf_long
seed '\001' whole.mcw 8192 mcw_head
seed '\001' whole.mcw 40000 mcw_long
head -c 64 VU_IDFY.bin >identify
cat identify FSI.bin FIT.bin >tables
seed '\002' tables 8192 record_files
cat FSI.bin FIT.bin >directory_file
seed '\003' directory_file 8192 directory_file
