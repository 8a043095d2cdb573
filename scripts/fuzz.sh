#!/usr/bin/env bash
# usage: fuzz.sh [SECONDS] — builds the fuzz targets and runs each that long (20 seconds unless told). What they find
# stays in build/fuzz/findings.
set -eu
cd "$(dirname "$0")/.."
seconds=${1:-20}
scripts/need-packages.sh clang libclang-rt-14-dev cmake ninja-build libcli11-dev
cmake --preset native-fuzz >/dev/null
cmake --build --preset native-fuzz
mkdir -p build/fuzz/findings
scripts/make-corpus.sh build/native-fuzz/bin/wtarn build/fuzz/seeds
for target in images statements; do
  mkdir -p build/fuzz/corpus/$target
  # The targets give up root's rights: what they are to write they must be allowed to.
  chmod a+rwx build/fuzz/findings build/fuzz/corpus/$target
  echo "fuzz_$target, $seconds seconds"
  log=build/fuzz/$target.log
  if ! ASAN_OPTIONS=detect_leaks=0 build/native-fuzz/bin/fuzz_$target -max_total_time="$seconds" -timeout=20 \
      -rss_limit_mb=4096 -max_len=65536 -artifact_prefix="$PWD/build/fuzz/findings/" -print_final_stats=1 \
      "$PWD/build/fuzz/corpus/$target" "$PWD/build/fuzz/seeds/$target" >"$log" 2>&1; then
    tail -60 "$log"
    echo "fuzz_$target found something; see build/fuzz/findings" >&2
    exit 1
  fi
  grep -E 'stat::number_of_executed_units|cov:' "$log" | tail -2
done
