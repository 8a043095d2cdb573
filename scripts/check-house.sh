#!/usr/bin/env bash
# Formatting and the house rules that a machine can check.
set -u
cd "$(dirname "$0")/.."
bad=0
complain() {
  [ -z "$2" ] && return
  printf '%s:\n%s\n\n' "$1" "$2"
  bad=1
}
sources() { git ls-files -- '*.h' '*.cpp'; }
texts() { git ls-files -- '*.h' '*.cpp' '*.txt' '*.md' '*.sh' '*.cmake' '*.case' run test .ci/run; }

complain 'not formatted (clang-format -i mends it)' \
  "$(sources | xargs -d '\n' clang-format --dry-run 2>&1 | grep -E 'warning: code should be' | cut -d: -f1 | sort -u)"
complain 'unbounded calls' \
  "$(sources | xargs -d '\n' grep -nE '\b(sprintf|vsprintf|wsprintfA?|strcpy|strcat|gets)\s*\(')"
complain 'goto' "$(sources | xargs -d '\n' grep -nE '\bgoto\b')"
complain 'files over 600 lines (tables aside)' \
  "$(sources | grep -v '_table\.' | xargs -d '\n' wc -l | awk '$2 != "total" && $1 > 600 {print $1, $2}')"
complain 'promises instead of code' \
  "$(texts | grep -v check-house | xargs -d '\n' grep -nIE '\b(TODO|FIXME|XXX|HACK)\b')"
complain 'headers without #pragma once' "$(git ls-files -- '*.h' | xargs -d '\n' grep -L '#pragma once')"
complain 'headers that do not say what they are' \
  "$(git ls-files -- '*.h' | while read -r file; do head -1 "$file" | grep -q '^//' || echo "$file"; done)"
complain 'include directions' "$(scripts/check-includes.sh . 2>&1)"
exit $bad
