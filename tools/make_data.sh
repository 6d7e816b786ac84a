#!/bin/sh
# Builds the data files that serve general use and points the per-user
# configuration of the library at them (`make data`):
#   de405.bin   JPL DE405 from Debian's casacore table (1959-2060; the Sun,
#               the planets and the Moon inside that span)
#   kvxjdt.dat  Delta T steps from the system's leap-second list
#   meteor.txt  the meteor-shower list of the distribution
# planet.xyz is deliberately not made: outside its span the library carries
# a body in it on by two-body motion, which is worse than its theories.
#
# usage: tools/make_data.sh [DIR]     (default ${XDG_DATA_HOME:-~/.local/share}/kvxlib)
# KVX_DE_FILE=FILE copies that DE file instead of building DE405 (no
# packages needed); KVX_LEAP_LIST=FILE reads another leap-second list.
# The settings go to ${XDG_CONFIG_HOME:-~/.config}/Pelorin/kvxlib/6.0.conf;
# the other settings in it are kept, the old file saved as 6.0.conf.bak.
set -e
top=$(cd "$(dirname "$0")/.." && pwd)
dir=${1:-${XDG_DATA_HOME:-$HOME/.local/share}/kvxlib}
leap=${KVX_LEAP_LIST:-/usr/share/zoneinfo/leap-seconds.list}
confdir=${XDG_CONFIG_HOME:-$HOME/.config}/Pelorin/kvxlib
mkdir -p "$dir" "$confdir"
dir=$(cd "$dir" && pwd)

if [ -n "$KVX_DE_FILE" ]; then
  cp "$KVX_DE_FILE" "$dir/de405.bin"
else
  sh "$top/tools/ensure-packages.sh" python3-casacore casacore-data-jpl-de405 python3-numpy tzdata
  [ -s "$dir/de405.bin" ] || /usr/bin/python3 "$top/tools/de405_from_casacore.py" "$dir/de405.bin.new"
  [ -s "$dir/de405.bin.new" ] && mv "$dir/de405.bin.new" "$dir/de405.bin"
fi
/usr/bin/python3 "$top/tools/make_kvxjdt.py" --list "$leap" > "$dir/kvxjdt.dat.new"
mv "$dir/kvxjdt.dat.new" "$dir/kvxjdt.dat"
cp "$top/tests/data/meteor.txt" "$dir/meteor.txt"

conf=$confdir/6.0.conf
kept=""
if [ -f "$conf" ]; then
  cp "$conf" "$conf.bak"
  kept=$(grep -v -i -E '^[[:space:]]*(DtUtFile|JplEphUnixFile|MeteorFile)[[:space:]]*=|^# written by make data' "$conf" || true)
fi
{
  echo "# written by make data ($(date -u +%Y-%m-%d))"
  echo "DtUtFile=$dir/kvxjdt.dat"
  echo "JplEphUnixFile=$dir/de405.bin"
  echo "MeteorFile=$dir/meteor.txt"
  [ -n "$kept" ] && printf '%s\n' "$kept"
} > "$conf.new"
mv "$conf.new" "$conf"
echo "data files in $dir; settings in $conf"
