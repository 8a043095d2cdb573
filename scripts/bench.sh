#!/usr/bin/env bash
# Builds and runs all measurements. The status is 1 when one is over its limit.
set -eu
cd "$(dirname "$0")/.."
scripts/need-packages.sh g++ cmake ninja-build libcli11-dev libgtest-dev
cmake --preset native >/dev/null
cmake --build --preset native
status=0
for bench in bench_startup bench_records bench_list; do build/native/bin/$bench || status=1; done
exit $status
