#!/usr/bin/env bash
# usage: check-includes.sh ROOT — reads every #include "room/..." against who may include whom, and looks for
# conditions on the operating system outside the rooms that may have them.
set -eu
cd "$1"

# room: the rooms that it may include besides itself
may_include() {
  case $1 in
    host) echo "" ;;
    platform) echo "" ;;
    drive) echo "host platform" ;;
    records) echo "drive host platform" ;;
    listwin) echo "drive host platform" ;;
    imaging) echo "platform" ;;
    reports) echo "records listwin drive host platform" ;;
    burnin) echo "records listwin drive host platform" ;;
    defects) echo "records listwin imaging drive host platform" ;;
    livetest) echo "defects imaging records drive host platform" ;;
    ui) echo "livetest defects burnin reports imaging listwin records drive host platform" ;;
    plugin) echo "ui livetest defects burnin reports imaging listwin records drive host platform" ;;
    standin) echo "host platform" ;;
    *) return 1 ;;
  esac
}

bad=0
checked=0
while IFS=: read -r file included; do
  room=${file%%/*}
  allowed=$(may_include "$room") || continue
  target=${included%%/*}
  checked=$((checked + 1))
  case " $room $allowed " in
    *" $target "*) ;;
    *) echo "$file includes $included, which $room/ may not"; bad=1 ;;
  esac
done < <(grep -rHoE --include='*.h' --include='*.cpp' '^#include "[^"]+"' -- */ 2>/dev/null |
         grep -v '^build/' | sed -E 's/^([^:]+):#include "([^"]+)"/\1:\2/')

# The system's own headers and conditions stay behind the seam.
if grep -rnE --include='*.h' --include='*.cpp' '#\s*if.*(_WIN32|__linux__|__MINGW)|<windows\.h>' -- \
    drive records listwin imaging reports burnin defects livetest ui plugin 2>/dev/null; then
  echo "conditions on the operating system belong to platform/ and host/"
  bad=1
fi
[ "$checked" -gt 100 ] || { echo "only $checked includes were found: the check itself is broken"; bad=1; }
exit $bad
