#!/bin/sh
# make data without network: the builder run on the committed DE405 excerpt
# and the system's leap-second list into a scratch home; kvx must then find
# all three files through the per-user settings, keep a setting that was
# there before, and take the Sun from the DE file inside its span only.
# usage: make_data_test.sh SOURCE_DIR KVX
set -e
src=$1 kvx=$2
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
export HOME="$tmp" XDG_CONFIG_HOME="$tmp/config" XDG_CONFIG_DIRS="$tmp/none" XDG_DATA_HOME="$tmp/share"
mkdir -p "$XDG_CONFIG_HOME/Pelorin/kvxlib"
echo "OnMemory=no" > "$XDG_CONFIG_HOME/Pelorin/kvxlib/6.0.conf"
KVX_DE_FILE="$src/tests/data/de405_2000.bin" sh "$src/tools/make_data.sh" >/dev/null
conf="$XDG_CONFIG_HOME/Pelorin/kvxlib/6.0.conf"
fail() { echo "make_data_test: $*"; cat "$conf"; exit 1; }
grep -q '^OnMemory=no$' "$conf" || fail "an earlier setting was dropped"
grep -q "^JplEphUnixFile=$tmp/share/kvxlib/de405.bin$" "$conf" || fail "no JPL setting"
! grep -q -i 'PlanetXyzFile' "$conf" || fail "planet.xyz configured"
data=$("$kvx" data --json 2>&1)
echo "$data" | grep -q '"version": 405' || fail "DE405 not loaded: $data"
echo "$data" | grep -q '"meteors": {[^}]*"count": [1-9]' || fail "meteor list not loaded: $data"
echo "$data" | grep -q '"startup_messages": \[\]' || fail "start-up complained: $data"
"$kvx" sun --date 2000-06-01 --tz 0 --json | grep -q '"source": "JPL DE405"' || fail "Sun in 2000 not from DE405"
"$kvx" sun --date 2024-06-01 --tz 0 --json | grep -q '"source": "built-in theory (Newcomb)"' || fail "Sun in 2024"
"$kvx" moon --date 2000-06-01 --tz 0 --json | grep -q '"source": "JPL DE405"' || fail "Moon in 2000 not from DE405"
echo ok
