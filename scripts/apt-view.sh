#!/usr/bin/env bash
# usage: apt-view.sh DIR i386|source — a private view of this machine's own package sources in DIR, for packages that the
# machine itself is not set up for: those of the 32-bit architecture, or source packages. Changes nothing on the machine
# and names no address. Prints the configuration file that APT_CONFIG is to name.
set -euo pipefail
dir=$(realpath -m "$1")
kind=$2
mkdir -p "$dir"/{parts,lists/partial,cache/archives/partial,state}
: >"$dir/status"

# The 32-bit index of the security stanza is out of step on some mirrors, and nothing here needs it.
type=deb
architecture=amd64
if [ "$kind" = source ]; then type=deb-src; else architecture=i386; fi
cat /etc/apt/sources.list.d/*.sources 2>/dev/null |
  awk -v RS= -v ORS='\n\n' '!/[Ss]uites:[^\n]*security/' |
  sed -e "s/^Types:.*/Types: $type/" -e '/^Architectures:/d' >"$dir/parts/view.sources"
if [ -s /etc/apt/sources.list ]; then
  sed -nE "s/^deb (\[[^]]*\] )?/$type /p" /etc/apt/sources.list | grep -v security >"$dir/parts/view.list" || true
fi

cat >"$dir/apt.conf" <<CONF
APT::Architecture "$architecture";
APT::Architectures { "$architecture"; };
APT::Install-Recommends "false";
Acquire::Languages "none";
Dir::Etc::SourceList "/dev/null";
Dir::Etc::SourceParts "$dir/parts";
Dir::State "$dir/state";
Dir::State::Lists "$dir/lists";
Dir::State::status "$dir/status";
Dir::Cache "$dir/cache";
CONF
APT_CONFIG=$dir/apt.conf apt-get -qq update >&2
echo "$dir/apt.conf"
