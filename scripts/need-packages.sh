#!/usr/bin/env bash
# usage: need-packages.sh PACKAGE... — installs those that this machine lacks, with its own package manager.
set -eu
missing=()
for package in "$@"; do
  dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0
command -v apt-get >/dev/null || { echo "please install: ${missing[*]}" >&2; exit 1; }
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get -qq update >/dev/null || echo "the package lists could not be refreshed; trying what is known" >&2
"${as_root[@]}" apt-get -qq -y install --no-install-recommends "${missing[@]}" >/dev/null
